// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogueeditor.h"

#include "parameter/parametereditor.h"
#include "parameter/parameterpagelist.h"
#include "parameter/parametertable.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <stdexcept>
#include <string>

void waitUntil(const std::function<bool()> &condition, const char *what, int limitMs)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > limitMs)
            throw std::runtime_error(std::string("waited in vain for ") + what);
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 50);
    }
}

std::unique_ptr<ParameterEditor> makeEditor()
{
    auto editor = std::make_unique<ParameterEditor>();
    editor->resize(1100, 700);
    editor->show();
    // The last thing that the reading of the catalogue does is to select the first page.
    const auto *pageList = editor->findChild<ParameterPageList *>();
    waitUntil([pageList] { return pageList->currentRow() == 1; }, "the catalogue");
    QCoreApplication::processEvents();
    return editor;
}

int parameterCount(const ParameterEditor &editor)
{
    int count = 0;
    const auto pages = editor.findChildren<ParameterTable *>();
    for (const ParameterTable *page : pages)
        count += page->rowCount();
    return count;
}
