// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogueeditor.h"

#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "support/editordriver.h"

#include <QCoreApplication>
#include <QTimer>

#include <stdexcept>
#include <string>

void waitUntil(const std::function<bool()> &condition, const char *what, int limitMs)
{
    bool isOver = false;
    QTimer limit;
    QObject::connect(&limit, &QTimer::timeout, &limit, [&isOver] { isOver = true; });
    limit.start(limitMs);
    while (!condition()) {
        if (isOver)
            throw std::runtime_error(std::string("waited in vain for ") + what);
        // With a time given it would not sleep between two events, and take the other threads' processor.
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
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
