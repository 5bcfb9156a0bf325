// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter editor whose frames go to a peer that stands in for the link, from before its catalogue is
// loaded. Main thread; an object on the stack of a test function.
#pragma once

#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "support/editordriver.h"
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

    EditorDriver driver() const { return EditorDriver(editor); }
    bool waitForCatalogue() const { return driver().waitForCatalogue(); }
    ParameterTable *page(int index) const { return driver().page(index); }
    QString value(int index, const QString &code) const { return driver().value(index, code); }
    QColor colour(int index, const QString &code) const { return driver().colour(index, code); }
    void keepOnly(const QStringList &codes) const { driver().keepOnly(codes); }

    QPointer<ParameterEditor> editor = new ParameterEditor;
    RegisterPeer peer;
    QListWidget *list = nullptr;
    QStackedWidget *stack = nullptr;
    QProgressDialog *progress = nullptr;
};
