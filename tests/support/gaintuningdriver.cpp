// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/gaintuningdriver.h"

#include "gaintuning/gaintuning.h"
#include "shell/mainwindow.h"
#include "support/workplace.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

namespace {

// Fields by the number of their parameter and the digits behind their point.
struct Field
{
    QString name;
    int number;
    int digits;
};

QList<Field> fields()
{
    QList<Field> list{{"InertiaRatio", 602, 1},
                      {"PositionLoopGain", 610, 1},
                      {"SpeedLoopGain", 611, 1},
                      {"SpeedLoopIntegralTime", 612, 1},
                      {"TorqueFilterTime", 502, 2},
                      {"SpeedFeedforwardGain", 637, 1},
                      {"SpeedFeedforwardFilterTime", 638, 2}};
    for (int notch = 0; notch < 4; ++notch) {
        const QString name = QStringLiteral("Notch%1").arg(notch + 1);
        list.append({name + "Frequency", 663 + notch * 3, 0});
        list.append({name + "WidthGrade", 664 + notch * 3, 0});
        list.append({name + "DeepGrade", 665 + notch * 3, 0});
    }
    return list;
}

QString shown(int value, int digits)
{
    const int unit = digits == 2 ? 100 : 10;
    if (digits == 0)
        return QString::number(value);
    return QStringLiteral("%1.%2").arg(value / unit).arg(value % unit, digits, 10, QLatin1Char('0'));
}

} // namespace

GainTuningDriver::GainTuningDriver(const MainWindow *shell)
{
    Workplace::clickAction(shell, "actionGain_Tuning");
    window = shell->findChild<GainTuning *>();
}

bool GainTuningDriver::hasReadAll() const
{
    // The mode of the notches is read last.
    return window->findChild<QComboBox *>(QStringLiteral("comBoxNotchMode"))->currentIndex() >= 0;
}

QString GainTuningDriver::text(const QString &fieldName) const
{
    return window->findChild<QLineEdit *>(fieldName)->text();
}

void GainTuningDriver::type(const QString &fieldName, const QString &text) const
{
    auto *const edit = window->findChild<QLineEdit *>(fieldName);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

void GainTuningDriver::choose(const char *comboName, int index) const
{
    window->findChild<QComboBox *>(QLatin1String(comboName))->setCurrentIndex(index);
}

void GainTuningDriver::setGrade(int grade) const
{
    window->findChild<QSpinBox *>(QStringLiteral("spinBoxRigidityGrade"))->setValue(grade);
}

void GainTuningDriver::click(const char *buttonName) const
{
    window->findChild<QPushButton *>(QLatin1String(buttonName))->click();
}

bool GainTuningDriver::isEnabled(const char *widgetName) const
{
    return window->findChild<QWidget *>(QLatin1String(widgetName))->isEnabled();
}

void GainTuningDriver::scrollDown() const
{
    QScrollBar *const bar =
        window->findChild<QScrollArea *>(QStringLiteral("scrollArea"))->verticalScrollBar();
    bar->setValue(bar->maximum());
}

void GainTuningDriver::typeIntoTable(int row, const QString &text) const
{
    window->findChild<QTableWidget *>(QStringLiteral("tableWidget"))->item(row, 3)->setText(text);
}

QStringList GainTuningDriver::differencesTo(kt500sim::SimulatedDrive *drive) const
{
    QStringList found;
    const auto compare = [&found](const QString &name, const QString &seen, const QString &expected) {
        if (seen != expected)
            found.append(QStringLiteral("%1 shows '%2', the drive holds '%3'").arg(name, seen, expected));
    };
    const auto held = [drive](int number) { return int(drive->readRegister(number).value_or(0)); };
    for (const Field &field : fields()) {
        const QString expected = shown(held(field.number), field.digits);
        compare(QStringLiteral("set") + field.name, text(QStringLiteral("set") + field.name), expected);
        compare(QStringLiteral("cur") + field.name, text(QStringLiteral("cur") + field.name), expected);
    }
    compare(QStringLiteral("lineEditCurrent"), text(QStringLiteral("lineEditCurrent")), shown(held(602), 1));
    const auto *const table = window->findChild<QTableWidget *>(QStringLiteral("tableWidget"));
    for (int row = 0; row < 4; ++row)
        compare(QStringLiteral("row %1").arg(row), table->item(row, 3)->text(), shown(held(605 + row), 0));
    const QList<QPair<const char *, int>> boxes{
        {"comBoxGainMode", 600}, {"comBoxoffline", 604}, {"comBoxonline", 686}, {"comBoxNotchMode", 662}};
    for (const auto &[name, number] : boxes)
        compare(QLatin1String(name),
                QString::number(window->findChild<QComboBox *>(QLatin1String(name))->currentIndex()),
                QString::number(held(number)));
    compare(QStringLiteral("grade"),
            QString::number(window->findChild<QSpinBox *>(QStringLiteral("spinBoxRigidityGrade"))->value()),
            QString::number(held(601)));
    return found;
}
