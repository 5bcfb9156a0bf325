// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterfiledialogs.h"

#include "files/wholefile.h"
#include "parameter/parametereditor.h"
#include "parameter/parameterpages.h"
#include "widgets/messages.h"

#include <QFileDialog>

void saveParameterFile(const ParameterPages &pages, QWidget *window)
{
    const QString name =
        QFileDialog::getSaveFileName(window, ParameterEditor::tr("Save scp file"), QString(),
                                     ParameterEditor::tr("Parameter File(*.scp);;CSV File(*.csv)"));
    if (name.isEmpty())
        return;
    // The name alone decides the format, and one that names none leaves an empty file.
    QByteArray contents;
    if (name.endsWith(QLatin1String(".scp"), Qt::CaseInsensitive))
        contents = pages.scpContents();
    else if (name.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive))
        contents = pages.csvContents();
    if (!writeWholeFile(name, contents))
        showMessage(ParameterEditor::tr("Save file failed!"));
}

void openParameterFile(const ParameterPages &pages, QWidget *window)
{
    const QString name = QFileDialog::getOpenFileName(window, ParameterEditor::tr("open scp file"), QString(),
                                                      ParameterEditor::tr("Parameter File(*.scp)"));
    if (name.isEmpty())
        return;
    const auto contents = readWholeFile(name);
    if (!contents) {
        showMessage(ParameterEditor::tr("Open file failed!"));
        return;
    }
    pages.takeScpContents(*contents);
}
