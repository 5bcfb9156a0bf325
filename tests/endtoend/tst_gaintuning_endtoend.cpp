// SPDX-License-Identifier: GPL-3.0-or-later
// Gain tuning at a simulated drive, over a line that works and one that does not: every value shown is the
// drive's, and every value typed gets there.
#include "gaintuning/gaintuning.h"
#include "support/gaintuningdriver.h"
#include "support/modalanswers.h"
#include "support/rununtil.h"
#include "support/workplace.h"

#include <QPointer>
#include <QTest>

namespace {

const QString linkFailed = QStringLiteral("Fail to connect to the device via \nRead Modbus Failed!");

// Values that no other register has, inside the ranges of the fields.
void makeTelling(kt500sim::SimulatedDrive *drive)
{
    const QList<QPair<int, int>> values{
        {600, 0},    {601, 17},  {602, 37},  {610, 611}, {611, 412},  {612, 313}, {502, 214}, {637, 115},
        {638, 1116}, {605, 517}, {606, 118}, {607, 19},  {608, 1120}, {604, 1},   {686, 0},   {662, 0}};
    for (const auto &[number, value] : values)
        drive->writeRegister(number, quint16(value), kt500sim::RegisterCopy::Stored);
    for (int i = 0; i < 12; ++i)
        drive->writeRegister(663 + i, quint16(i % 3 == 2 ? 10 + i : 1000 + i),
                             kt500sim::RegisterCopy::Stored);
}

} // namespace

class GainTuningEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void firstReadShowsTheDrive_data();
    void firstReadShowsTheDrive();
    void typedValuesReachTheDrive_data();
    void typedValuesReachTheDrive();
    void roundGoesOnAfterALostLink_data();
    void roundGoesOnAfterALostLink();
    void linkLostInAWriteIsFollowedByWhatTheDriveHolds_data();
    void linkLostInAWriteIsFollowedByWhatTheDriveHolds();
    void garbageDelaysTheFirstReadOnly();
    void unaskedStreamShowsNothingThatTheDriveDoesNotHold();
    void refusedReadShowsNothingThatTheDriveDoesNotHold();
};

void GainTuningEndToEndTest::firstReadShowsTheDrive_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("speed");
    for (const char *speed : {"115200(485)", "USB"}) {
        const auto add = [speed](const char *name, const char *fault) {
            QTest::addRow("%s, %s", name, speed) << QString::fromLatin1(fault) << QString::fromLatin1(speed);
        };
        add("undisturbed", "clear");
        add("replies lost", "noreply 3");
        add("bad checksums", "badcrc 5");
        add("replies in two pieces", "split 4 5");
        add("replies in three pieces", "splinter 4 5");
        add("stale bytes in front", "stale 3");
        add("late reply", "late 1 70");
        add("two late replies", "late 2 120");
    }
    QTest::newRow("silent for a while") << QStringLiteral("silence 300") << QStringLiteral("115200(485)");
}

void GainTuningEndToEndTest::firstReadShowsTheDrive()
{
    QFETCH(QString, fault);
    QFETCH(QString, speed);
    Workplace place;
    makeTelling(place.drive.get());
    place.connectTo(speed);
    QTRY_VERIFY(place.isShownOnline());
    QVERIFY(place.drive->setFault(fault));
    const GainTuningDriver driver(place.window());
    QVERIFY(driver.window);
    QVERIFY(runUntil([&driver] { return driver.hasReadAll(); }, 20000));
    QCOMPARE(driver.differencesTo(place.drive.get()), QStringList());
}

void GainTuningEndToEndTest::typedValuesReachTheDrive_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("undisturbed") << "clear";
    QTest::newRow("replies lost") << "noreply 3";
    QTest::newRow("bad checksums") << "badcrc 5";
    QTest::newRow("replies in two pieces") << "split 4 5";
    QTest::newRow("replies in three pieces") << "splinter 4 5";
    QTest::newRow("stale bytes in front") << "stale 3";
    QTest::newRow("late reply") << "late 1 70";
}

void GainTuningEndToEndTest::typedValuesReachTheDrive()
{
    QFETCH(QString, fault);
    Workplace place;
    makeTelling(place.drive.get());
    place.connectTo(QStringLiteral("115200(485)"));
    QTRY_VERIFY(place.isShownOnline());
    const GainTuningDriver driver(place.window());
    QVERIFY(driver.window);
    QVERIFY(runUntil([&driver] { return driver.hasReadAll(); }, 20000));
    kt500sim::SimulatedDrive *const drive = place.drive.get();

    driver.type(QStringLiteral("setPositionLoopGain"), QStringLiteral("72.5"));
    driver.type(QStringLiteral("setTorqueFilterTime"), QStringLiteral("0.45"));
    QVERIFY(drive->setFault(fault));
    driver.click("pbtnSettingsToCurrent");
    QVERIFY(runUntil([&driver] { return driver.isEnabled("pbtnSettingsToCurrent"); }, 10000));
    driver.type(QStringLiteral("setNotch2Frequency"), QStringLiteral("432"));
    QVERIFY(drive->setFault(fault));
    driver.click("pbtnSettingsToCurrent_Notch");
    QVERIFY(runUntil([&driver] { return driver.isEnabled("pbtnSettingsToCurrent_Notch"); }, 10000));
    QVERIFY(drive->setFault(fault));
    driver.typeIntoTable(1, QStringLiteral("333"));
    QVERIFY(runUntil([drive] { return drive->readRegister(606) == 333; }, 5000));

    QCOMPARE(driver.differencesTo(drive), QStringList());
    for (const auto &[number, value] : QList<QPair<int, int>>{
             {610, 725}, {502, 45}, {602, 37}, {611, 412}, {666, 432}, {674, 21}, {606, 333}}) {
        QCOMPARE(int(drive->readRegister(number).value_or(0)), value);
        QCOMPARE(int(drive->readRegister(number, kt500sim::RegisterCopy::Stored).value_or(0)), value);
    }
}

void GainTuningEndToEndTest::roundGoesOnAfterALostLink_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("silent") << "silence 2500";
    QTest::newRow("unplugged") << "hangup 2000";
}

// The probe of the restarted link is answered to this window; what was in flight is asked again.
void GainTuningEndToEndTest::roundGoesOnAfterALostLink()
{
    QFETCH(QString, fault);
    ModalAnswers boxes;
    Workplace place;
    makeTelling(place.drive.get());
    place.connectTo(QStringLiteral("115200(485)"));
    QTRY_VERIFY(place.isShownOnline());
    boxes.expectPassing(linkFailed);
    QVERIFY(place.drive->setFault(fault));
    const GainTuningDriver driver(place.window());
    QVERIFY(driver.window);
    QTRY_VERIFY_WITH_TIMEOUT(!place.isShownOnline(), 10000);
    QVERIFY(runUntil([&driver] { return driver.hasReadAll(); }, 20000));
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 10000));
    QCOMPARE(driver.differencesTo(place.drive.get()), QStringList());
}

void GainTuningEndToEndTest::linkLostInAWriteIsFollowedByWhatTheDriveHolds_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QByteArray>("button"); // empty: a cell of the table
    for (const char *fault : {"silence 2500", "hangup 2000"}) {
        for (const char *button : {"pbtnSettingsToCurrent", "pbtnSettingsToCurrent_Notch", ""})
            QTest::addRow("%s, %s", fault, *button ? button : "table")
                << QString::fromLatin1(fault) << QByteArray(button);
    }
}

// Whatever has not reached the drive is not shown as if it had.
void GainTuningEndToEndTest::linkLostInAWriteIsFollowedByWhatTheDriveHolds()
{
    QFETCH(QString, fault);
    QFETCH(QByteArray, button);
    ModalAnswers boxes;
    Workplace place;
    makeTelling(place.drive.get());
    place.connectTo(QStringLiteral("115200(485)"));
    QTRY_VERIFY(place.isShownOnline());
    const GainTuningDriver driver(place.window());
    QVERIFY(driver.window);
    QVERIFY(runUntil([&driver] { return driver.hasReadAll(); }, 20000));
    boxes.expectPassing(linkFailed);
    driver.type(QStringLiteral("setSpeedFeedforwardGain"), QStringLiteral("99.9"));
    driver.type(QStringLiteral("setNotch4DeepGrade"), QStringLiteral("39"));
    QVERIFY(place.drive->setFault(fault));
    if (button.isEmpty())
        driver.typeIntoTable(1, QStringLiteral("333"));
    else
        driver.click(button);
    QTRY_VERIFY_WITH_TIMEOUT(!place.isShownOnline(), 10000);
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 10000));
    QVERIFY(runUntil([&place] { return place.isShownOnline(); }, 20000));
    runUntil([&] { return driver.differencesTo(place.drive.get()).isEmpty(); }, 10000);
    QCOMPARE(driver.differencesTo(place.drive.get()).join('\n'), QString());
    QVERIFY(button.isEmpty() || driver.isEnabled(button));
}

void GainTuningEndToEndTest::garbageDelaysTheFirstReadOnly()
{
    Workplace place;
    makeTelling(place.drive.get());
    place.connectTo(QStringLiteral("115200(485)"));
    QTRY_VERIFY(place.isShownOnline());
    QVERIFY(place.drive->setFault(QStringLiteral("garbage on")));
    const GainTuningDriver driver(place.window());
    QVERIFY(driver.window);
    place.drive->resetCounters();
    QVERIFY(runUntil([&place] { return place.drive->counters().requests > 0; }, 5000));
    QVERIFY(place.drive->setFault(QStringLiteral("garbage off")));
    QVERIFY(runUntil([&driver] { return driver.hasReadAll(); }, 20000));
    QCOMPARE(driver.differencesTo(place.drive.get()), QStringList());
}

// A chunk of the stream may stand in for an answer: then the read stands, and the window opened anew reads
// all.
void GainTuningEndToEndTest::unaskedStreamShowsNothingThatTheDriveDoesNotHold()
{
    Workplace place;
    makeTelling(place.drive.get());
    place.connectTo(QStringLiteral("115200(485)"));
    QTRY_VERIFY(place.isShownOnline());
    QPointer<GainTuning> first;
    {
        const GainTuningDriver driver(place.window());
        first = driver.window;
        QVERIFY(first);
        QVERIFY(runUntil([&] { return !driver.text("setInertiaRatio").isEmpty(); }, 10000));
        QVERIFY(place.drive->setFault(QStringLiteral("stream on")));
        QVERIFY(runUntil([&place] { return !place.drive->isStreaming(); }, 5000));
        runUntil([&driver] { return driver.hasReadAll(); }, 3000);
        for (const QString &difference : driver.differencesTo(place.drive.get()))
            QVERIFY2(difference.contains(QLatin1String("shows ''")) || difference.startsWith("comBox"),
                     qPrintable(difference));
        first->parentWidget()->close();
    }
    QVERIFY(runUntil([&first] { return first.isNull(); }, 5000));
    const GainTuningDriver driver(place.window());
    QVERIFY(driver.window);
    QVERIFY(runUntil([&driver] { return driver.hasReadAll(); }, 20000));
    QCOMPARE(driver.differencesTo(place.drive.get()), QStringList());
}

// Deliberate: a refusal ends the first read; the fields behind it stay empty.
void GainTuningEndToEndTest::refusedReadShowsNothingThatTheDriveDoesNotHold()
{
    Workplace place;
    makeTelling(place.drive.get());
    place.connectTo(QStringLiteral("115200(485)"));
    QTRY_VERIFY(place.isShownOnline());
    const GainTuningDriver driver(place.window());
    QVERIFY(driver.window);
    QVERIFY(runUntil([&] { return !driver.text("setInertiaRatio").isEmpty(); }, 10000));
    QVERIFY(place.drive->setFault(QStringLiteral("exception 2 1")));
    const quint64 before = place.drive->counters().requests;
    QVERIFY(runUntil([&] { return place.drive->counters().requests > before + 8; }, 10000));
    const int ratio = place.drive->readRegister(1560).value_or(0);
    QCOMPARE(
        driver.text("calculated"),
        QStringLiteral("%1.%2").arg(ratio / 100).arg(ratio % 100, 2, 10, QLatin1Char('0'))); // by the round
    const QStringList differences = driver.differencesTo(place.drive.get());
    QVERIFY(!differences.isEmpty());
    for (const QString &difference : differences)
        QVERIFY2(difference.contains(QLatin1String("shows ''")) || difference.startsWith("comBox"),
                 qPrintable(difference));
}

QTEST_MAIN(GainTuningEndToEndTest)
#include "tst_gaintuning_endtoend.moc"
