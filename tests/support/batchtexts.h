// SPDX-License-Identifier: GPL-3.0-or-later
// What the batch window shows in English, beside what it tells as the editor does. Constant data; any thread.
#pragma once

#include <QString>

namespace batchtext {

const QString title = QStringLiteral("Batch Parameter Modification");
const QString openTool = QStringLiteral("open parameter file");
const QString saveTool = QStringLiteral("save parameter file");
const QString readTool = QStringLiteral("read parameter");
const QString writeTool = QStringLiteral("write parameter file");
const QString newRowTool = QStringLiteral("newRow");
const QString deleteRowTool = QStringLiteral("deleteRow");
const QString tickAllTool = QStringLiteral("selectAll");
const QString untickAllTool = QStringLiteral("deselectAll");
const QString openDialog = QStringLiteral("open csv file");
const QString saveDialog = QStringLiteral("Save csv file");
const QString openFilter = QStringLiteral("Parameter File(*.csv)");
const QString saveFilter = QStringLiteral("CSV File(*.csv)");
const QString firstCode = QStringLiteral("Pn-000");
const QString notRead = QStringLiteral("default"); // beside a value that was not read yet
const QString unknown = QStringLiteral("F");       // in the cells of a code of no page

} // namespace batchtext
