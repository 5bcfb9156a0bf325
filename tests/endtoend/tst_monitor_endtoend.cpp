// SPDX-License-Identifier: GPL-3.0-or-later
// The monitor in the main window at a simulated drive with a moving motor, in both languages.
#include "endtoend/monitorplace.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QWheelEvent>

#include <cmath>

namespace {

using namespace monitorplace;

constexpr double revolutionsPerMinute = 60 / (2 * M_PI);

} // namespace

class MonitorEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void everyValueIsTheDrives_data();
    void everyValueIsTheDrives();
    void servoRunsFromThePanel_data();
    void servoRunsFromThePanel();
    void inputAndOutputAreForced_data();
    void inputAndOutputAreForced();
    void faultIsToldResetAndRecorded_data();
    void faultIsToldResetAndRecorded();
    void oneWindowForBothEntries();
    void wheelChangesNoSetting();
};

static void addLanguages()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "en_US";
    QTest::newRow("Chinese") << "zh_CN";
}

void MonitorEndToEndTest::everyValueIsTheDrives_data()
{
    addLanguages();
}

void MonitorEndToEndTest::everyValueIsTheDrives()
{
    QFETCH(QString, language);
    Workplace place(language);
    place.drive->freeze();
    changeState(place.drive.get(), 1);
    const Parameter_Monitor *const window = openConnected(&place, usb);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    QVERIFY(differentValues(monitor) >= 15);
    changeState(place.drive.get(), 2);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    QVERIFY(place.drive->raiseFault(27));
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    QCOMPARE(monitor.edit("faultCurrentEdit")->text(), QStringLiteral("Er-027"));
}

void MonitorEndToEndTest::servoRunsFromThePanel_data()
{
    addLanguages();
}

void MonitorEndToEndTest::servoRunsFromThePanel()
{
    QFETCH(QString, language);
    Workplace place(language);
    const Parameter_Monitor *const window = openConnected(&place, usb);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    kt500sim::SimulatedDrive *const drive = place.drive.get();
    QTRY_COMPARE(monitor.combo("diFunctionComboBox1")->currentIndex(), 1);
    monitor.choose("diSourceComboBox", 1);
    QTRY_COMPARE(*drive->readRegister(200), quint16(0xFFFF));
    monitor.choose("methodComboBox", 1);
    QTRY_COMPARE(*drive->readRegister(100), quint16(1));
    monitor.type("lineEdit3", "300.5");
    QTRY_COMPARE(*drive->readPair(401), 3005);
    QVERIFY(!drive->state().energised);

    monitor.click("enableButton");
    QTRY_VERIFY(drive->state().energised);
    QTRY_VERIFY(std::fabs(drive->state().speed * revolutionsPerMinute - 300.5) < 10);
    QTRY_VERIFY(std::abs(monitor.status("Pn-F00").toInt() - 300) < 15);
    QTRY_COMPARE(monitor.status("Pn-F25"), QStringLiteral("0001"));
    QTRY_VERIFY(monitor.isGreen("di", 1));
    const QString before = monitor.status("Pn-F11");
    QTRY_VERIFY(monitor.status("Pn-F11") != before);

    monitor.click("enableButton");
    QTRY_VERIFY(!drive->state().energised);
    QTRY_COMPARE(monitor.status("Pn-F25"), QStringLiteral("0000"));
    QVERIFY(!monitor.isGreen("di", 1));
    QTRY_VERIFY_WITH_TIMEOUT(std::abs(monitor.status("Pn-F00").toInt()) <= 1, 15000);
    // Stored for the next power-on, but for the level.
    QCOMPARE(*drive->readRegister(100, kt500sim::RegisterCopy::Stored), quint16(1));
    QCOMPARE(*drive->readRegister(202, kt500sim::RegisterCopy::Stored), quint16(0));
}

void MonitorEndToEndTest::inputAndOutputAreForced_data()
{
    addLanguages();
}

void MonitorEndToEndTest::inputAndOutputAreForced()
{
    QFETCH(QString, language);
    Workplace place(language);
    const Parameter_Monitor *const window = openConnected(&place, usb);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    kt500sim::SimulatedDrive *const drive = place.drive.get();
    monitor.choose("diSourceComboBox", 1);
    monitor.choose("doSourceComboBox", 1);
    QTRY_COMPARE(*drive->readRegister(200), quint16(0xFFFF));
    QTRY_COMPARE(*drive->readRegister(201), quint16(0xFFFF));
    monitor.click("diLevelButton16");
    QTRY_COMPARE(*drive->readRegister(202), quint16(0x8000));
    QTRY_COMPARE(monitor.status("Pn-F25"), QStringLiteral("8000"));
    QTRY_VERIFY(monitor.isGreen("di", 16));
    monitor.click("doLevelButton5");
    QTRY_COMPARE(*drive->readRegister(203), quint16(0x0010));
    QTRY_COMPARE(monitor.status("Pn-F26"), QStringLiteral("0010"));
    for (int row = 1; row <= 16; ++row)
        QTRY_COMPARE(monitor.isGreen("do", row), row == 5);
    monitor.click("diLevelButton16");
    monitor.click("doLevelButton5");
    QTRY_COMPARE(monitor.status("Pn-F25"), QStringLiteral("0000"));
    QTRY_COMPARE(monitor.status("Pn-F26"), QStringLiteral("0000"));
}

void MonitorEndToEndTest::faultIsToldResetAndRecorded_data()
{
    addLanguages();
}

void MonitorEndToEndTest::faultIsToldResetAndRecorded()
{
    QFETCH(QString, language);
    Workplace place(language);
    const Parameter_Monitor *const window = openConnected(&place, usb);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    kt500sim::SimulatedDrive *const drive = place.drive.get();
    QTRY_COMPARE(monitor.status("Pn-F28"), QStringLiteral("0"));
    QVERIFY(!monitor.button("faultResetButton")->isEnabled());
    QVERIFY(drive->raiseFault(27));
    QTRY_COMPARE(monitor.edit("faultCurrentEdit")->text(), QStringLiteral("Er-027"));
    QVERIFY(!monitor.edit("faultNameEdit")->text().isEmpty());
    QVERIFY(!monitor.edit("faultCauseEdit")->text().isEmpty());
    QVERIFY(monitor.button("faultResetButton")->isEnabled());
    QVERIFY(monitor.button("faultResetButton")->styleSheet().contains(QLatin1String("rgb(255, 0, 0)")));
    monitor.click("faultResetButton");
    QTRY_COMPARE(drive->state().fault, 0);
    QTRY_COMPARE(monitor.edit("faultCurrentEdit")->text(), QString());
    QVERIFY(!monitor.button("faultResetButton")->isEnabled());
    QVERIFY(drive->raiseFault(11));
    QTRY_COMPARE(monitor.edit("faultCurrentEdit")->text(), QStringLiteral("Er-011"));
    monitor.tabs()->setCurrentIndex(1);
    QTRY_COMPARE(monitor.recordCodes(), QStringList({"Er-011", "Er-027"}));
    monitor.tabs()->setCurrentIndex(0);
    drive->setWarning(10, true);
    QTRY_COMPARE(monitor.edit("alarmCurrentEdit")->text(), QStringLiteral("AL-010"));
    QCOMPARE(monitor.edit("faultCurrentEdit")->text(), QStringLiteral("Er-011"));
}

void MonitorEndToEndTest::oneWindowForBothEntries()
{
    const Workplace place;
    Parameter_Monitor *const window = openMonitor(place);
    QVERIFY(window);
    place.action("actionStatus_Monitor")->trigger();
    place.action("actionParameter_Monitor")->trigger();
    auto *const area = place.window()->findChild<QMdiArea *>();
    QCOMPARE(area->subWindowList().size(), 1);
    const QMdiSubWindow *const sub = area->subWindowList().first();
    QCOMPARE(sub->widget(), window);
    QCOMPARE(sub->pos(), QPoint(0, 0));
    QCOMPARE(sub->size(), QSize(area->width() - 50, int(area->height() * 0.99)));
}

void MonitorEndToEndTest::wheelChangesNoSetting()
{
    const Workplace place;
    const Parameter_Monitor *const window = openMonitor(place);
    QVERIFY(window);
    const QList<QComboBox *> boxes = window->findChildren<QComboBox *>();
    QCOMPARE(boxes.size(), 2 + 32 + 8);
    for (QComboBox *box : boxes) {
        const int before = box->currentIndex();
        const QPointF centre = box->rect().center();
        QWheelEvent wheel(centre, box->mapToGlobal(centre.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(box, &wheel);
        QCOMPARE(box->currentIndex(), before);
    }
}

QTEST_MAIN(MonitorEndToEndTest)

#include "tst_monitor_endtoend.moc"
