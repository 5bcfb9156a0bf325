// SPDX-License-Identifier: GPL-3.0-or-later
// Gain tuning at a drive that moves its motor: what the window writes is felt by the machine, and the scope
// beside it in the main window shows it.
#include "gaintuning/gaintuning.h"
#include "shell/mainwindow.h"
#include "support/gaintuningdriver.h"
#include "support/rununtil.h"
#include "support/scopedriver.h"
#include "support/workplace.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QTest>

#include <cmath>

namespace {

// Load and rotor are five times the rotor. The shaft resonates at 936 Hz, which is
// sqrt(3600 * (1 / 0.00013 + 1 / 0.00052)) / 2 pi.
const kt500sim::PlantSettings machine{5, 3600, 0.006, 0.0003, 0.08, 0};
const QString resonance = QStringLiteral("936"); // Hz
constexpr double trueRatio = 5;

// Grades: the first is quiet, the others ring without a notch.
constexpr int quietGrade = 12;
constexpr int ringingGrade = 16;
constexpr int highGrade = 18;

constexpr std::chrono::milliseconds halfSecond(500);
constexpr int limit = 20000; // ms

// Speed control, servo on by its input. Forward and back without end, or at one speed.
void letRun(kt500sim::SimulatedDrive *drive, bool backAndForth)
{
    const auto set = [drive](int number, int value) { drive->writeRegister(number, quint16(value)); };
    set(100, 1);
    set(1100, 1); // sections, again and again
    drive->writePair(1106, 3000);
    drive->writePair(1111, -3000);
    set(1110, 100); // ms at the speed
    set(1115, 100);
    drive->writePair(401, 3000); // 300 rpm
    set(400, backAndForth ? 2 : 1);
    set(200, 0xFFFF); // inputs by register
    set(202, 1);
}

double decibels(double before, double after)
{
    return 20 * std::log10(before / after);
}

} // namespace

class GainTuningMotorEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void inertiaEstimateSettlesWhileItMovesAndIsAdopted();
    void gradeThatIsTooHighRingsAndALowerOneDoesNot();
    void notchAtTheFoundResonanceTakesItsPeakDown();

private:
    // Main window, gain tuning and, when asked for, a scope on the torque command beside it.
    struct Bench
    {
        explicit Bench(int ratio)
        {
            drive = place.drive.get();
            drive->setPlant(machine);
            drive->writeRegister(602, quint16(ratio), kt500sim::RegisterCopy::Stored);
        }
        bool open(bool withScope);
        // The next round of the window has been answered.
        bool waitForRound() const;
        bool setGrade(int grade) const;
        // Torque command in percent, of half a second.
        bool record() const
        {
            drive->advance(halfSecond);
            return scope->record(drive, halfSecond);
        }

        Workplace place;
        kt500sim::SimulatedDrive *drive = nullptr;
        std::unique_ptr<GainTuningDriver> window;
        std::unique_ptr<ScopeDriver> scope;
    };
};

bool GainTuningMotorEndToEndTest::Bench::open(bool withScope)
{
    place.connectTo(QStringLiteral("115200(485)"));
    if (!QTest::qWaitFor([this] { return place.isShownOnline(); }))
        return false;
    window = std::make_unique<GainTuningDriver>(place.window());
    if (!window->window || !runUntil([this] { return window->hasReadAll(); }, limit))
        return false;
    if (!withScope)
        return true;
    scope = std::make_unique<ScopeDriver>(place.window());
    constexpr int torqueCommand = 3; // row of the catalogue
    return scope->showOnly(torqueCommand);
}

bool GainTuningMotorEndToEndTest::Bench::waitForRound() const
{
    // The answers of a round that was under way, and a whole one: the ratio is asked for first.
    const quint64 before = drive->counters().requests;
    return runUntil([&] { return drive->counters().requests >= before + 9; }, limit);
}

bool GainTuningMotorEndToEndTest::Bench::setGrade(int grade) const
{
    window->setGrade(grade);
    window->click("pbtnSettingsToCurrent");
    return runUntil(
        [&] {
            return window->isEnabled("pbtnSettingsToCurrent") && drive->readRegister(601) == grade &&
                   drive->readRegister(601, kt500sim::RegisterCopy::Stored) == grade;
        },
        limit);
}

void GainTuningMotorEndToEndTest::inertiaEstimateSettlesWhileItMovesAndIsAdopted()
{
    Bench bench(10); // the drive knows of no load yet
    QVERIFY(bench.open(false));
    const GainTuningDriver &window = *bench.window;
    bench.drive->advance(std::chrono::seconds(5));
    QVERIFY(bench.waitForRound());
    QCOMPARE(window.text("calculated"), QStringLiteral("1.00"));

    window.window->findChild<QRadioButton *>("radioButtonOnline")->click();
    window.choose("comBoxonline", 2);
    QVERIFY(runUntil([&] { return bench.drive->readRegister(686) == 2; }, limit));
    letRun(bench.drive, true);
    QList<double> shown;
    const auto hasSettled = [&shown] {
        const QList<double> last = shown.mid(shown.size() - 3);
        const auto [least, most] = std::minmax_element(last.begin(), last.end());
        return last.size() == 3 && *most - *least <= 0.05;
    };
    while (!hasSettled() && shown.size() < 20) {
        bench.drive->advance(std::chrono::seconds(2));
        QVERIFY(bench.waitForRound());
        shown.append(window.text("calculated").toDouble());
    }
    QVERIFY(hasSettled());
    QVERIFY2(std::fabs(shown.last() - trueRatio) < 0.1, qPrintable(QString::number(shown.last())));

    // Adopting needs the offline mode, which switches the identification off.
    window.window->findChild<QRadioButton *>("radioButtonOffline")->click();
    QVERIFY(runUntil([&] { return bench.drive->readRegister(686) == 0; }, limit));
    QVERIFY(bench.waitForRound());
    const QString adopted = window.text("calculated");
    window.click("btnCalculatedToCurrent");
    // Two digits behind the point are shown; one of them is written, the other is cut off.
    const int written = QString(adopted).remove('.').toInt() / 10;
    QVERIFY(runUntil([&] { return bench.drive->readRegister(602) == written; }, limit));
    QCOMPARE(int(bench.drive->readRegister(602, kt500sim::RegisterCopy::Stored).value_or(0)), written);
    QCOMPARE(window.text("lineEditCurrent"), QString::number(adopted.toDouble(), 'f', 1));
}

void GainTuningMotorEndToEndTest::gradeThatIsTooHighRingsAndALowerOneDoesNot()
{
    Bench bench(50);
    QVERIFY(bench.open(true));
    letRun(bench.drive, false);
    QVERIFY(bench.setGrade(quietGrade));
    QVERIFY(bench.record());
    QVERIFY2(bench.scope->swing() <= 2, qPrintable(QString::number(bench.scope->swing())));
    QVERIFY(bench.setGrade(highGrade));
    QVERIFY(bench.record());
    QVERIFY2(bench.scope->swing() >= 100, qPrintable(QString::number(bench.scope->swing())));
    const QPointF peak = bench.scope->peakOfSpectrum(50, 4000);
    QVERIFY2(peak.x() > 850 && peak.x() < 1050, qPrintable(QString::number(peak.x())));
    QVERIFY(bench.setGrade(quietGrade));
    QVERIFY(bench.record());
    QVERIFY2(bench.scope->swing() <= 2, qPrintable(QString::number(bench.scope->swing())));
}

// As the user's guide goes: find the resonance, set the notch, raise the grade.
void GainTuningMotorEndToEndTest::notchAtTheFoundResonanceTakesItsPeakDown()
{
    Bench bench(50);
    QVERIFY(bench.open(true));
    const GainTuningDriver &window = *bench.window;
    QCOMPARE(window.text("ResonanceFrequency"), QStringLiteral("0"));
    letRun(bench.drive, false);
    QVERIFY(bench.setGrade(ringingGrade));
    QVERIFY(bench.record());
    const QPointF before = bench.scope->peakOfSpectrum(50, 4000);
    QVERIFY(runUntil([&] { return window.text("ResonanceFrequency") == resonance; }, limit));
    QVERIFY2(std::fabs(before.x() / resonance.toDouble() - 1) < 0.03,
             qPrintable(QString::number(before.x())));

    window.type("setNotch1Frequency", window.text("ResonanceFrequency"));
    window.click("pbtnSettingsToCurrent_Notch");
    QVERIFY(runUntil([&] { return window.isEnabled("pbtnSettingsToCurrent_Notch"); }, limit));
    QCOMPARE(int(bench.drive->readRegister(663).value_or(0)), 936);
    // By the grade, the drive has other gains than its registers of manual gains say.
    QCOMPARE(window.differencesTo(bench.drive).filter(QStringLiteral("Notch")), QStringList());
    QVERIFY(bench.record());
    const QPointF after = bench.scope->peakOfSpectrum(before.x() * 0.95, before.x() * 1.05);
    QVERIFY2(decibels(before.y(), after.y()) >= 10,
             qPrintable(QStringLiteral("%1 %2").arg(before.y()).arg(after.y())));
    // Nor does it ring at another place.
    const QPointF highest = bench.scope->peakOfSpectrum(50, 4000);
    QVERIFY2(decibels(before.y(), highest.y()) >= 10, qPrintable(QString::number(highest.y())));

    QVERIFY(bench.setGrade(highGrade));
    QVERIFY(bench.record());
    QVERIFY2(bench.scope->swing() <= 5, qPrintable(QString::number(bench.scope->swing())));
}

QTEST_MAIN(GainTuningMotorEndToEndTest)
#include "tst_gaintuning_motor_endtoend.moc"
