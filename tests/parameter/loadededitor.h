// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter editor whose catalogue is loaded, with a peer that answers its frames. Main thread; an object
// on the stack of a test function.
#pragma once

#include "parameter/parameterbatch.h"
#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "support/batchdriver.h"
#include "support/editordriver.h"
#include "support/registerpeer.h"
#include "support/testdirectory.h"

#include <QListWidget>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTest>

#include <memory>
#include <stdexcept>

class LoadedEditor
{
public:
    explicit LoadedEditor(const QString &language = QStringLiteral("en_US"))
    {
        directory.setLanguage(language);
        editor = std::make_unique<ParameterEditor>();
        QObject::connect(editor.get(), qOverload<QByteArray, QString>(&ParameterEditor::writeToSerialPort),
                         &peer, &RegisterPeer::take);
        QObject::connect(&peer, &RegisterPeer::reply, editor.get(), &ParameterEditor::handleBaseParameter);
        const EditorDriver driver(editor.get());
        if (!driver.waitForCatalogue())
            throw std::runtime_error("the catalogue was not loaded");
        for (int i = 0; i < driver.pageCount(); ++i)
            pages.append(driver.page(i));
        batch = BatchDriver::find();
    }

    QTableWidgetItem *value(int page, int row) const
    {
        return pages.at(page)->item(row, ParameterTable::ValueColumn);
    }

    // The batch window, in a hand.
    BatchDriver list() const { return BatchDriver(batch); }

    int rowOf(int page, const QString &code) const { return EditorDriver::rowOf(pages.at(page), code); }

    TestDirectory directory;
    RegisterPeer peer;
    std::unique_ptr<ParameterEditor> editor;
    QList<ParameterTable *> pages;
    ParameterBatch *batch = nullptr;
};
