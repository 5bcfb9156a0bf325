// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter editor whose frames go to a peer that stands in for the link, from before its catalogue is
// loaded. Main thread; an object on the stack of a test function.
#pragma once

#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "support/registerpeer.h"

#include <QListWidget>
#include <QPointer>
#include <QProgressDialog>
#include <QStackedWidget>
#include <QTest>

class EditorBench
{
public:
    EditorBench()
    {
        QObject::connect(editor.data(), qOverload<QByteArray, QString>(&ParameterEditor::writeToSerialPort),
                         &peer, &RegisterPeer::take);
        QObject::connect(&peer, &RegisterPeer::reply, editor.data(), &ParameterEditor::handleBaseParameter);
        list = editor->findChild<QListWidget *>();
        stack = editor->findChild<QStackedWidget *>();
        progress = editor->findChild<QProgressDialog *>();
    }
    ~EditorBench() { delete editor; }
    Q_DISABLE_COPY_MOVE(EditorBench)

    bool waitForCatalogue() const
    {
        return QTest::qWaitFor([this] { return list->currentRow() == 1; });
    }
    ParameterTable *page(int index) const { return qobject_cast<ParameterTable *>(stack->widget(index)); }
    int rowOf(int index, const QString &code) const
    {
        for (int row = 0; row < page(index)->rowCount(); ++row) {
            if (page(index)->code(row) == code)
                return row;
        }
        return -1;
    }
    QString value(int index, const QString &code) const
    {
        return page(index)->text(rowOf(index, code), ParameterTable::ValueColumn);
    }
    QColor colour(int index, const QString &code) const
    {
        return page(index)->item(rowOf(index, code), ParameterTable::ValueColumn)->foreground().color();
    }
    // Leaves the named rows only, so that a page write is short.
    void keepOnly(const QStringList &codes) const
    {
        for (int index = 0; index < stack->count(); ++index) {
            for (int row = page(index)->rowCount() - 1; row >= 0; --row) {
                if (!codes.contains(page(index)->code(row)))
                    page(index)->removeRow(row);
            }
        }
    }

    QPointer<ParameterEditor> editor = new ParameterEditor;
    RegisterPeer peer;
    QListWidget *list = nullptr;
    QStackedWidget *stack = nullptr;
    QProgressDialog *progress = nullptr;
};
