// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/historybuttons.h"

#include <QCoreApplication>
#include <QToolButton>

namespace {

constexpr int distance = 5; // pixels, from the edges and from each other

QToolButton *makeHistoryButton(QWidget *parent, const QString &picture, const QString &toolTip)
{
    auto *button = new QToolButton(parent);
    button->setIcon(QIcon(picture));
    button->setToolTip(toolTip);
    button->adjustSize();
    button->hide();
    return button;
}

} // namespace

HistoryButtons::HistoryButtons(QWidget *plot)
    : backButton(makeHistoryButton(plot, QStringLiteral(":/pic/pic/撤销.png"),
                                   QCoreApplication::translate("Plotter", "Revocation")))
    , advanceButton(makeHistoryButton(plot, QStringLiteral(":/pic/pic/重做.png"),
                                      QCoreApplication::translate("Plotter", "Recover")))
{
}

void HistoryButtons::follow(const ViewHistory &history) const
{
    advanceButton->setEnabled(history.canAdvance());
    backButton->setEnabled(history.canGoBack());
}

void HistoryButtons::place(int width) const
{
    advanceButton->move(width - advanceButton->width() - distance, distance);
    backButton->move(advanceButton->x() - backButton->width() - distance, distance);
}
