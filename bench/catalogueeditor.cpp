// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogueeditor.h"

#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "support/editordriver.h"

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
    if (!EditorDriver(editor.get()).waitForCatalogue())
        throw std::runtime_error("the catalogue was not loaded");
    QCoreApplication::processEvents();
    return editor;
}

int parameterCount(const ParameterEditor &editor)
{
    int count = 0;
    for (const ParameterTable *page : EditorDriver(&editor).pages())
        count += page->rowCount();
    return count;
}
