// SPDX-License-Identifier: GPL-3.0-or-later
// The panel of warning and fault beside the fault record that takes its catalogue. Main thread; an object on
// the stack of a test function.
#pragma once

#include "monitor/alarm_error.h"
#include "monitor/faulthistory.h"
#include "support/testdirectory.h"
#include "support/wire.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

namespace alarmtext {

const QString red = QStringLiteral("background-color: rgb(255, 0, 0);                                        "
                                   "border-radius:22px;border:1px solid black;");
const QString grey = QStringLiteral("background-color: rgb(232, 238, 247);                                   "
                                    "     border-radius:22px;border:1px solid black;");

const QStringList overload{"Er-003", "Overload", "Motor blockage or overload",
                           "Check machinery or select high power drive"};

} // namespace alarmtext

// Both panels, in one language.
struct AlarmPanels
{
    explicit AlarmPanels(const char *language = "en_US")
    {
        directory.setLanguage(QString::fromLatin1(language));
        history = new FaultHistory;
        panel = new Alarm_Error(history);
    }
    ~AlarmPanels()
    {
        delete panel;
        delete history;
    }
    Q_DISABLE_COPY_MOVE(AlarmPanels)

    void report(int address, const char *data) const
    {
        panel->handAlarmErrorSlot(wire::bytes(data), address);
    }
    QLineEdit *edit(const QString &name) const { return panel->findChild<QLineEdit *>(name); }
    // Current, name, cause and corrective of "alarm" or "fault".
    QStringList texts(const QString &kind) const
    {
        QStringList list;
        for (const char *field : {"CurrentEdit", "NameEdit", "CauseEdit", "CorrectiveEdit"})
            list << edit(kind + QLatin1String(field))->text();
        return list;
    }
    QStringList toolTips(const QString &kind) const
    {
        QStringList list;
        for (const char *field : {"CurrentEdit", "NameEdit", "CauseEdit", "CorrectiveEdit"})
            list << edit(kind + QLatin1String(field))->toolTip();
        return list;
    }
    QPushButton *lamp() const { return panel->findChild<QPushButton *>(QStringLiteral("faultResetButton")); }
    bool isLit() const { return lamp()->isEnabled() && lamp()->styleSheet() == alarmtext::red; }
    bool isDark() const { return !lamp()->isEnabled() && lamp()->styleSheet() == alarmtext::grey; }
    QTableWidget *record() const { return history->findChild<QTableWidget *>(); }
    QStringList codes() const
    {
        QStringList list;
        for (int row = 0; row < 20; row += 2)
            list << record()->item(row, FaultHistory::CodeColumn)->text();
        return list;
    }

    TestDirectory directory;
    FaultHistory *history = nullptr;
    Alarm_Error *panel = nullptr;
};
