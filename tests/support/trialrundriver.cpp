// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/trialrundriver.h"

#include "trialrun/holdbutton.h"
#include "trialrun/trialrun.h"
#include "widgets/labelgrop.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTest>

namespace {

constexpr int valueColumn = 3;

} // namespace

TrialRunDriver::TrialRunDriver(TrialRun *window)
    : trialRun(window)
{
}

template <typename Widget>
Widget *TrialRunDriver::find(const char *name) const
{
    return trialRun->findChild<Widget *>(QLatin1String(name));
}

QWidget *TrialRunDriver::page() const
{
    return trialRun->widget();
}

QPushButton *TrialRunDriver::servoOn() const
{
    return find<QPushButton>("servoOnButton");
}

QPushButton *TrialRunDriver::servoOff() const
{
    return find<QPushButton>("servoOffButton");
}

QPushButton *TrialRunDriver::jogRun() const
{
    return find<QPushButton>("jogRunButton");
}

QPushButton *TrialRunDriver::positionRun() const
{
    return find<QPushButton>("positionRunButton");
}

QPushButton *TrialRunDriver::runButton(const char *name) const
{
    return find<QPushButton>(name);
}

HoldButton *TrialRunDriver::jogForward() const
{
    return find<HoldButton>("jogForwardButton");
}

HoldButton *TrialRunDriver::jogRollback() const
{
    return find<HoldButton>("jogRollbackButton");
}

HoldButton *TrialRunDriver::moveForward() const
{
    return find<HoldButton>("moveForwardButton");
}

HoldButton *TrialRunDriver::moveRollback() const
{
    return find<HoldButton>("moveRollbackButton");
}

QRadioButton *TrialRunDriver::once() const
{
    return find<QRadioButton>("onceButton");
}

QRadioButton *TrialRunDriver::continuous() const
{
    return find<QRadioButton>("continuousButton");
}

QTableWidget *TrialRunDriver::jogTable() const
{
    return find<QTableWidget>("jogTable");
}

QTableWidget *TrialRunDriver::positionTable() const
{
    return find<QTableWidget>("positionTable");
}

void TrialRunDriver::click(QWidget *button)
{
    // Near the left edge: of a radio button only the mark and the text can be clicked.
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
}

void TrialRunDriver::hold(QWidget *button)
{
    QTest::mousePress(button, Qt::LeftButton);
}

void TrialRunDriver::letGo(QWidget *button)
{
    QTest::mouseRelease(button, Qt::LeftButton);
}

QString TrialRunDriver::cell(const QTableWidget *table, int row)
{
    return table->item(row, valueColumn)->text();
}

bool TrialRunDriver::opensForTyping(QTableWidget *table, int row)
{
    const QPoint place = table->visualItemRect(table->item(row, valueColumn)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
    auto *const editor = table->viewport()->findChild<QLineEdit *>();
    if (!editor)
        return false;
    QTest::keyClick(editor, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return true;
}

void TrialRunDriver::type(QTableWidget *table, int row, const QString &text)
{
    table->item(row, valueColumn)->setText(text);
}

QString TrialRunDriver::shown(const char *name) const
{
    return find<LabelGrop>(name)->valueLabel->text();
}

QString TrialRunDriver::forwardLimit() const
{
    return shown("forwardLabel");
}

QString TrialRunDriver::currentPosition() const
{
    return shown("currentLabel");
}

QString TrialRunDriver::rollbackLimit() const
{
    return shown("rollbackLabel");
}

QStringList TrialRunDriver::cells(const QTableWidget *table)
{
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row)
        texts.append(cell(table, row));
    return texts;
}
