// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/rununtil.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

bool runUntil(const std::function<bool()> &condition, int limit)
{
    constexpr int lookInterval = 5; // ms
    QElapsedTimer clock;
    clock.start();
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (condition() || clock.elapsed() > limit)
            loop.quit();
    });
    look.start(lookInterval);
    if (!condition())
        loop.exec();
    return condition();
}
