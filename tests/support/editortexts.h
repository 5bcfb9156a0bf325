// SPDX-License-Identifier: GPL-3.0-or-later
// What the parameter editor and its batch window tell in English. Constant data; any thread.
#pragma once

#include <QString>

namespace editortext {

const QString readingDone = QStringLiteral("Parameters reading completed");
const QString writingDone = QStringLiteral("Parameters writing completed");
const QString requestTimeout = QStringLiteral("Request Timeout!");
const QString writeTimeout = QStringLiteral("Write Timeout!");
const QString openFailed = QStringLiteral("Open file failed!");
const QString saveFailed = QStringLiteral("Save file failed!");
const QString saveDone = QStringLiteral("Save file completed");
const QString offline = QStringLiteral("Fail to connect to the device via USB!");
const QString pdfDone = QStringLiteral("Finish create Parameter PDF ");

} // namespace editortext
