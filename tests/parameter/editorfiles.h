// SPDX-License-Identifier: GPL-3.0-or-later
// Saving and opening parameter files in a loaded editor, and the values that it then shows. Main thread.
#pragma once

#include "testfiles.h"

#include "parameter/loadededitor.h"
#include "support/filedialoganswers.h"

namespace editorfiles {

inline const QString saveTitle = QStringLiteral("Save scp file");
inline const QString openTitle = QStringLiteral("open scp file");

inline void save(const LoadedEditor &loaded, const QString &name)
{
    FileDialogAnswers dialogs;
    dialogs.expect(saveTitle, name);
    loaded.editor->saveParameters();
}

inline void open(const LoadedEditor &loaded, const QString &name)
{
    FileDialogAnswers dialogs;
    dialogs.expect(openTitle, name);
    loaded.editor->openExistParameter();
}

inline QList<QStringList> valuesOf(const LoadedEditor &loaded)
{
    QList<QStringList> values;
    for (int page = 0; page < loaded.pages.size(); ++page) {
        values.append(QStringList());
        for (int row = 0; row < loaded.pages.at(page)->rowCount(); ++row)
            values.last().append(loaded.value(page, row)->text());
    }
    return values;
}

inline void setAllValues(const LoadedEditor &loaded, const QString &text)
{
    for (int page = 0; page < loaded.pages.size(); ++page) {
        for (int row = 0; row < loaded.pages.at(page)->rowCount(); ++row)
            loaded.value(page, row)->setText(text);
    }
}

} // namespace editorfiles
