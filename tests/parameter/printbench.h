// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter editor that is about to print. Main thread.
#pragma once

#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"

#include <QAction>
#include <QListWidget>
#include <QStackedWidget>
#include <QTest>
#include <QTextEdit>
#include <QTextTable>

namespace printbench {

inline const QString transformProgress = QStringLiteral("transform|transform...|9|0-12|modal|no button");

// An editor with its catalogue loaded.
class Bench
{
public:
    Bench()
    {
        editor.show();
        stack = editor.findChild<QStackedWidget *>();
    }
    bool waitForCatalogue() const
    {
        const QListWidget *const list = editor.findChild<QListWidget *>();
        return QTest::qWaitFor([list] { return list->currentRow() == 1; });
    }
    // A few rows a page are enough where it is not about their number.
    bool waitForFewRows() const
    {
        if (!waitForCatalogue())
            return false;
        for (int index = 0; index < stack->count(); ++index)
            page(index)->setRowCount(10);
        return true;
    }
    ParameterTable *page(int index) const { return qobject_cast<ParameterTable *>(stack->widget(index)); }
    QAction *action(const char *name) const { return editor.findChild<QAction *>(QLatin1String(name)); }
    QTextEdit *text() const { return editor.findChild<QTextEdit *>(); }
    QTextTable *printed() const
    {
        return text() ? qobject_cast<QTextTable *>(text()->document()->rootFrame()->childFrames().value(0))
                      : nullptr;
    }
    QString printedText(int row, int column) const
    {
        return printed()->cellAt(row, column).firstCursorPosition().block().text();
    }

    ParameterEditor editor;
    QStackedWidget *stack = nullptr;
};

} // namespace printbench
