// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/communicationsetting.h"
#include "link/portlist.h"
#include "link/serialport.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

class CommunicationSettingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void dialogShowsItsTextsAndSpeeds();
    void speedOfTheEntryIsEmitted_data();
    void speedOfTheEntryIsEmitted();
    void portsOfTheMakerComeFirstLastFoundOnTop();
    void detectingTwiceGivesTheSameList();
    void okWithoutAPortDoesNothing();
    void okClosesAndEndsSilentReconnection();
    void cancelEmitsNothing();
    void shownDialogKeepsItsSize();
    void dialogComesInTheMiddleOfTheScreen();
    void enterMeansOk();
    void longPortNamesAreToldApart();
    void combosOfTheGroupBeginAtOneX();
    void unreachableModeButtonsKeepTheirEffect();
};

namespace {

QComboBox *portsOf(const CommunicationSetting &dialog)
{
    return dialog.findChild<QComboBox *>(QStringLiteral("portCombox"));
}

void click(const CommunicationSetting &dialog, const char *button)
{
    QTest::mouseClick(dialog.findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
}

QStringList itemsOf(const QComboBox *box)
{
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items.append(box->itemText(i));
    return items;
}

} // namespace

void CommunicationSettingTest::init()
{
    addSerialPort({QStringLiteral("P1"), QStringLiteral("Other"), QStringLiteral("Maker")});
    addSerialPort({QStringLiteral("P2"), QStringLiteral("Brennic adapter"), QStringLiteral("Maker")});
    addSerialPort(
        {QStringLiteral("P3"), QStringLiteral("brennic in small letters"), QStringLiteral("Maker")});
    addSerialPort({QStringLiteral("P4"), QStringLiteral("The Brennic"), QStringLiteral("Maker")});
}

void CommunicationSettingTest::cleanup()
{
    for (const char *name : {"P1", "P2", "P3", "P4"})
        removeSerialPort(QLatin1String(name));
    SerialPort::reconnecting = false;
}

void CommunicationSettingTest::dialogShowsItsTextsAndSpeeds()
{
    const CommunicationSetting dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Brennic_Soft Setting"));
    QCOMPARE(dialog.minimumSize(), QSize(300, 300));
    QVERIFY(!(dialog.windowFlags() & Qt::WindowMinimizeButtonHint));
    QVERIFY(!(dialog.windowFlags() & Qt::WindowMaximizeButtonHint));
    QCOMPARE(dialog.findChild<QGroupBox *>()->title(), QStringLiteral("Auto Detect"));
    QStringList labels;
    const QList<QLabel *> all = dialog.findChildren<QLabel *>();
    for (const QLabel *label : all)
        labels.append(label->text());
    labels.sort();
    QCOMPARE(labels, QStringList({"BaudRate :", "Port :", "Select Device :"}));
    QCOMPARE(itemsOf(dialog.findChild<QComboBox *>(QStringLiteral("deviceCombox"))), QStringList("KT500"));
    const auto *const bauds = dialog.findChild<QComboBox *>(QStringLiteral("baudCombox"));
    QCOMPARE(itemsOf(bauds),
             QStringList({"115200(485)", "57600(485)", "38400(485)", "19200(485)", "9600(485)", "USB"}));
    QCOMPARE(bauds->currentText(), QStringLiteral("115200(485)"));
    // The mode buttons stand in a frame of their own, outside the dialog.
    QVERIFY(dialog.findChildren<QRadioButton *>().isEmpty());
}

void CommunicationSettingTest::speedOfTheEntryIsEmitted_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("speed");
    QTest::newRow("115200(485)") << 0 << 115200;
    QTest::newRow("57600(485)") << 1 << 57600;
    QTest::newRow("38400(485)") << 2 << 38400;
    QTest::newRow("19200(485)") << 3 << 19200;
    QTest::newRow("9600(485)") << 4 << 9600;
    QTest::newRow("USB") << 5 << 100;
}

void CommunicationSettingTest::speedOfTheEntryIsEmitted()
{
    QFETCH(int, row);
    QFETCH(int, speed);
    CommunicationSetting dialog;
    QSignalSpy spy(&dialog, &CommunicationSetting::setPortName);
    dialog.findChild<QComboBox *>(QStringLiteral("baudCombox"))->setCurrentIndex(row);
    click(dialog, "okButton");
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().at(0).toString(), QStringLiteral("The Brennic(P4)"));
    QCOMPARE(spy.first().at(1).toInt(), speed);
}

void CommunicationSettingTest::portsOfTheMakerComeFirstLastFoundOnTop()
{
    const CommunicationSetting dialog;
    const QStringList items = itemsOf(portsOf(dialog));
    QCOMPARE(items.mid(0, 2), QStringList({"The Brennic(P4)", "Brennic adapter(P2)"}));
    QCOMPARE(items.mid(items.size() - 2), QStringList({"Other(P1)", "brennic in small letters(P3)"}));
    QCOMPARE(portsOf(dialog)->currentText(), items.first());
}

void CommunicationSettingTest::detectingTwiceGivesTheSameList()
{
    const CommunicationSetting dialog;
    const QStringList items = itemsOf(portsOf(dialog));
    click(dialog, "detectButton");
    click(dialog, "detectButton");
    QCOMPARE(itemsOf(portsOf(dialog)), items);
}

void CommunicationSettingTest::okWithoutAPortDoesNothing()
{
    CommunicationSetting dialog;
    QSignalSpy spy(&dialog, &CommunicationSetting::setPortName);
    dialog.show();
    portsOf(dialog)->clear();
    SerialPort::reconnecting = true;
    click(dialog, "okButton");
    QCOMPARE(spy.count(), 0);
    QVERIFY(dialog.isVisible());
    QVERIFY(SerialPort::reconnecting);
}

void CommunicationSettingTest::okClosesAndEndsSilentReconnection()
{
    CommunicationSetting dialog;
    dialog.show();
    SerialPort::reconnecting = true;
    bool clearedBefore = false;
    connect(&dialog, &CommunicationSetting::setPortName, this,
            [&clearedBefore] { clearedBefore = !SerialPort::reconnecting; });
    click(dialog, "okButton");
    QVERIFY(clearedBefore);
    QVERIFY(!dialog.isVisible());
}

void CommunicationSettingTest::cancelEmitsNothing()
{
    CommunicationSetting dialog;
    QSignalSpy spy(&dialog, &CommunicationSetting::setPortName);
    dialog.show();
    SerialPort::reconnecting = true;
    click(dialog, "cancelButton");
    QCOMPARE(spy.count(), 0);
    QVERIFY(!dialog.isVisible());
    QVERIFY(SerialPort::reconnecting);
}

void CommunicationSettingTest::shownDialogKeepsItsSize()
{
    CommunicationSetting dialog;
    dialog.show();
    QCOMPARE(dialog.minimumSize(), dialog.size());
    QCOMPARE(dialog.maximumSize(), dialog.size());
}

void CommunicationSettingTest::dialogComesInTheMiddleOfTheScreen()
{
    CommunicationSetting dialog;
    for (int i = 0; i < 2; ++i) {
        dialog.move(3, 5);
        dialog.show();
        const QPoint off = dialog.pos() + dialog.rect().center() - dialog.screen()->geometry().center();
        QVERIFY2(off.manhattanLength() <= 2, qPrintable(QString::number(off.manhattanLength())));
        dialog.close();
    }
}

void CommunicationSettingTest::enterMeansOk()
{
    CommunicationSetting dialog;
    QSignalSpy spy(&dialog, &CommunicationSetting::setPortName);
    dialog.show();
    dialog.findChild<QComboBox *>(QStringLiteral("baudCombox"))->setFocus();
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(spy.count(), 1);
    QVERIFY(!dialog.isVisible());
}

void CommunicationSettingTest::longPortNamesAreToldApart()
{
    CommunicationSetting dialog;
    dialog.show();
    QComboBox *const ports = portsOf(dialog);
    const QSize sizeBefore = dialog.size();
    const QString first =
        QStringLiteral("Brennic adapter, a name that is a good deal longer than the dialog");
    for (const char *name : {"ttyUSB8", "ttyUSB9"})
        addSerialPort({QLatin1String(name), first + first, QStringLiteral("Maker")});
    click(dialog, "detectButton");
    for (const char *name : {"ttyUSB8", "ttyUSB9"})
        removeSerialPort(QLatin1String(name));
    QCOMPARE(dialog.size(), sizeBefore);
    const QString text = first + first + QStringLiteral("(ttyUSB9)");
    QCOMPARE(ports->currentText(), text);
    QVERIFY(ports->fontMetrics().horizontalAdvance(text) > ports->width());
    QCOMPARE(ports->toolTip(), text);
    QCOMPARE(ports->itemData(1, Qt::ToolTipRole).toString(), first + first + QStringLiteral("(ttyUSB8)"));
    const QImage ninth = ports->grab().toImage();
    ports->setCurrentIndex(1);
    QVERIFY(ports->toolTip().endsWith(QLatin1String("(ttyUSB8)")));
    QVERIFY(ports->grab().toImage() != ninth);
}

void CommunicationSettingTest::combosOfTheGroupBeginAtOneX()
{
    CommunicationSetting dialog;
    dialog.show();
    const auto *const bauds = dialog.findChild<QComboBox *>(QStringLiteral("baudCombox"));
    QCOMPARE(portsOf(dialog)->x(), bauds->x());
    QCOMPARE(portsOf(dialog)->width(), bauds->width());
}

void CommunicationSettingTest::unreachableModeButtonsKeepTheirEffect()
{
    CommunicationSetting dialog;
    QComboBox *const ports = portsOf(dialog);
    const QStringList before = itemsOf(ports);
    QVERIFY(QMetaObject::invokeMethod(&dialog, "OnLineBtnToggled", Q_ARG(bool, false)));
    QCOMPARE(itemsOf(ports), before);
    QVERIFY(QMetaObject::invokeMethod(&dialog, "OnLineBtnToggled", Q_ARG(bool, true)));
    QCOMPARE(ports->count(), 2 * before.size());
    QVERIFY(itemsOf(ports).contains(QStringLiteral("P1Other")));
    QVERIFY(QMetaObject::invokeMethod(&dialog, "OffLineBtnToggled", Q_ARG(bool, false)));
    QCOMPARE(ports->count(), 2 * before.size());
    QVERIFY(QMetaObject::invokeMethod(&dialog, "OffLineBtnToggled", Q_ARG(bool, true)));
    QCOMPARE(ports->count(), 0);
}

QTEST_MAIN(CommunicationSettingTest)
#include "tst_communicationsetting.moc"
