// SPDX-License-Identifier: GPL-3.0-or-later
// Warning and fault in words, and the lamp, in both languages.
#include "alarmpanels.h"
#include "support/modalanswers.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

namespace {

using Panels = AlarmPanels;
using alarmtext::overload;

constexpr int warning = 9719;
constexpr int fault = 9720;

const QStringList none{"", "", "", ""};
const QStringList emergency{"AL-001", "Emergency stop", "External emergency stop input",
                            "Ensure emergency button reset when the system is safe"};

} // namespace

class AlarmErrorTest : public QObject
{
    Q_OBJECT

private slots:
    void panelStartsEmpty();
    void fieldsStandInTheirCells_data();
    void fieldsStandInTheirCells();
    void numberShowsItsRow_data();
    void numberShowsItsRow();
    void noFaultLeavesEverythingEmpty();
    void reservedFaultLightsTheLamp();
    void unknownFaultShowsNothing_data();
    void unknownFaultShowsNothing();
    void unknownFaultKeepsTheOldOne();
    void warningAndFaultStandSideBySide();
    void alarmNeverLightsTheLamp();
    void nameOfAGoneAlarmStaysInItsToolTip();
    void goneFaultLeavesNoToolTip();
    void longTextShowsItsBeginning();
    void textThatChangesShowsItsBeginning();
    void textThatStaysIsLeftAlone();
    void otherAddressUpdatesTheLampOnly();
    void resetIsOfferedAgainWhileTheFaultStays();
    void missingCatalogueIsTold();
    void missingCatalogueShowsNoText();
};

void AlarmErrorTest::panelStartsEmpty()
{
    const Panels panels;
    QCOMPARE(panels.texts("alarm"), none);
    QCOMPARE(panels.texts("fault"), none);
    QCOMPARE(panels.lamp()->text(), QStringLiteral("Fault\nReset"));
    QCOMPARE(panels.lamp()->size(), QSize(45, 45));
    QVERIFY(!panels.lamp()->isEnabled());
    // Four blanks fewer than later.
    QCOMPARE(panels.lamp()->styleSheet(),
             QStringLiteral("background-color: rgb(232, 238, 247);                                    "
                            "border-radius:22px;border:1px solid black;"));
    QStringList labels;
    const QList<QLabel *> found = panels.panel->findChildren<QLabel *>();
    for (const QLabel *label : found)
        labels << label->text();
    QCOMPARE(labels, QStringList({"Alarm Current", "Alarm Name", "Alaem Cause", "Alarm Corrective",
                                  "Fault Current", "Fault Name", "Fault Cause", "Fault Corrective"}));
    QCOMPARE(panels.panel->findChild<QGroupBox *>()->title(), QStringLiteral("Alarm and Fault"));
    const QList<QLineEdit *> edits = panels.panel->findChildren<QLineEdit *>();
    for (const QLineEdit *edit : edits)
        QVERIFY(edit->isReadOnly());
}

void AlarmErrorTest::fieldsStandInTheirCells_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("alarm") << QStringLiteral("alarm");
    QTest::newRow("fault") << QStringLiteral("fault");
}

void AlarmErrorTest::fieldsStandInTheirCells()
{
    QFETCH(QString, kind);
    const Panels panels;
    const auto placeOf = [&panels](QWidget *widget) {
        int row = -1;
        int column = -1;
        int rows = 0;
        int columns = 0;
        const QList<QGridLayout *> grids = panels.panel->findChildren<QGridLayout *>();
        for (const QGridLayout *grid : grids) {
            if (grid->indexOf(widget) >= 0)
                grid->getItemPosition(grid->indexOf(widget), &row, &column, &rows, &columns);
        }
        return QList<int>{row, column, rows, columns};
    };
    QCOMPARE(placeOf(panels.edit(kind + QLatin1String("CurrentEdit"))), (QList<int>{0, 1, 1, 1}));
    QCOMPARE(placeOf(panels.edit(kind + QLatin1String("NameEdit"))), (QList<int>{1, 1, 1, 1}));
    QCOMPARE(placeOf(panels.edit(kind + QLatin1String("CauseEdit"))), (QList<int>{2, 1, 1, 3}));
    QCOMPARE(placeOf(panels.edit(kind + QLatin1String("CorrectiveEdit"))), (QList<int>{3, 1, 1, 4}));
    QCOMPARE(placeOf(panels.lamp()), (QList<int>{0, 4, 2, 2}));
}

void AlarmErrorTest::numberShowsItsRow_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *language, int address, const char *data, const char *code,
                        const char *name) {
        QTest::addRow("%s %s", language, code) << QByteArray(language) << address << QByteArray(data)
                                               << QString::fromLatin1(code) << QString::fromUtf8(name);
    };
    row("en_US", warning, "0001", "AL-001", "Emergency stop");
    row("en_US", warning, "000A", "AL-010", "Absolute position loss");
    row("en_US", warning, "0014", "AL-020", "Absolute position counter overflow");
    row("en_US", fault, "0001", "Er-001", "Overcurrent");
    row("en_US", fault, "0013", "Er-019", "Encoder initial magnetic field error");
    row("en_US", fault, "0028", "Er-040", "Motor code error");
    row("en_US", fault, "002D", "Er-045", "Motor code error");
    row("en_US", fault, "0046", "Er-070", "Absolute position mode motor does not match");
    row("zh_CN", warning, "0001", "AL-001", "");
    row("zh_CN", fault, "0003", "Er-003", "");
}

void AlarmErrorTest::numberShowsItsRow()
{
    QFETCH(QByteArray, language);
    QFETCH(int, address);
    QFETCH(QByteArray, data);
    QFETCH(QString, code);
    QFETCH(QString, name);
    const Panels panels(language.constData());
    panels.report(address, data.constData());
    const QString kind = address == warning ? QStringLiteral("alarm") : QStringLiteral("fault");
    QCOMPARE(panels.texts(kind).first(), code);
    if (!name.isEmpty())
        QCOMPARE(panels.texts(kind).at(1), name);
    else
        QVERIFY(panels.texts(kind).at(1).at(0).unicode() > 0x4E00);
    QCOMPARE(panels.toolTips(kind), QStringList(QString()) + panels.texts(kind).mid(1));
    QCOMPARE(panels.texts(address == warning ? QStringLiteral("fault") : QStringLiteral("alarm")), none);
}

void AlarmErrorTest::noFaultLeavesEverythingEmpty()
{
    const Panels panels;
    panels.report(fault, "0000");
    QCOMPARE(panels.texts("fault"), none);
    QVERIFY(panels.isDark());
}

void AlarmErrorTest::reservedFaultLightsTheLamp()
{
    const Panels panels;
    panels.report(fault, "0002");
    QCOMPARE(panels.texts("fault"), QStringList({"Er-002", "Reserved", "", ""}));
    QVERIFY(panels.isLit());
}

void AlarmErrorTest::unknownFaultShowsNothing_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("41") << QByteArray("en_US") << QByteArray("0029");
    QTest::newRow("100, a code of four digits") << QByteArray("en_US") << QByteArray("0064");
    QTest::newRow("the greatest number") << QByteArray("en_US") << QByteArray("FFFF");
    QTest::newRow("19 in Chinese") << QByteArray("zh_CN") << QByteArray("0013");
}

void AlarmErrorTest::unknownFaultShowsNothing()
{
    QFETCH(QByteArray, language);
    QFETCH(QByteArray, data);
    const Panels panels(language.constData());
    panels.report(fault, data.constData());
    QCOMPARE(panels.texts("fault"), none);
    QVERIFY(panels.isDark());
}

void AlarmErrorTest::unknownFaultKeepsTheOldOne()
{
    const Panels panels;
    panels.report(fault, "0003");
    panels.report(fault, "0029");
    QCOMPARE(panels.texts("fault"), overload);
    QVERIFY(panels.isLit());
}

void AlarmErrorTest::warningAndFaultStandSideBySide()
{
    const Panels panels;
    panels.report(warning, "0001");
    panels.report(fault, "0003");
    QCOMPARE(panels.texts("alarm"), emergency);
    QCOMPARE(panels.texts("fault"), overload);
    panels.report(warning, "0000");
    QCOMPARE(panels.texts("alarm"), none);
    QCOMPARE(panels.texts("fault"), overload);
    QVERIFY(panels.isLit());
    panels.report(warning, "0001");
    panels.report(fault, "0000");
    QCOMPARE(panels.texts("alarm"), emergency);
    QCOMPARE(panels.texts("fault"), none);
    QVERIFY(panels.isDark());
}

void AlarmErrorTest::alarmNeverLightsTheLamp()
{
    const Panels panels;
    panels.report(warning, "0001");
    QVERIFY(panels.isDark());
}

void AlarmErrorTest::nameOfAGoneAlarmStaysInItsToolTip()
{
    const Panels panels;
    panels.report(warning, "0001");
    panels.report(warning, "0000");
    QCOMPARE(panels.texts("alarm"), none);
    QCOMPARE(panels.toolTips("alarm"), QStringList({"", "Emergency stop", "", ""}));
}

void AlarmErrorTest::goneFaultLeavesNoToolTip()
{
    const Panels panels;
    panels.report(fault, "0003");
    panels.report(fault, "0000");
    QCOMPARE(panels.toolTips("fault"), none);
}

void AlarmErrorTest::longTextShowsItsBeginning()
{
    const Panels panels;
    panels.report(warning, "000A");
    panels.report(fault, "0016");
    const QList<QLineEdit *> edits = panels.panel->findChildren<QLineEdit *>();
    for (QLineEdit *edit : edits) {
        QCOMPARE(edit->cursorPosition(), 0);
        edit->setCursorPosition(edit->text().size());
    }
    panels.report(warning, "000A");
    panels.report(fault, "0000");
    for (const QLineEdit *edit : edits)
        QCOMPARE(edit->cursorPosition(), 0);
}

// In the field that has the focus, too.
void AlarmErrorTest::textThatChangesShowsItsBeginning()
{
    const Panels panels;
    panels.panel->show();
    panels.panel->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(panels.panel));
    QLineEdit *const cause = panels.edit("faultCauseEdit");
    cause->setFocus();
    panels.report(fault, "0016");
    QVERIFY(cause->text().size() > 40);
    QCOMPARE(cause->cursorPosition(), 0);
}

// A cause that is longer than its field can be marked and read to its end.
void AlarmErrorTest::textThatStaysIsLeftAlone()
{
    const Panels panels;
    panels.panel->show();
    panels.panel->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(panels.panel));
    panels.report(fault, "0003");
    QLineEdit *const cause = panels.edit("faultCauseEdit");
    cause->setFocus();
    cause->setSelection(3, 5);
    panels.report(fault, "0003");
    QCOMPARE(cause->selectedText(), QStringLiteral("or bl"));
}

void AlarmErrorTest::otherAddressUpdatesTheLampOnly()
{
    const Panels panels;
    panels.report(fault, "0003");
    panels.lamp()->setEnabled(false);
    panels.report(9717, "0000");
    QCOMPARE(panels.texts("fault"), overload);
    QVERIFY(panels.isLit());
}

void AlarmErrorTest::resetIsOfferedAgainWhileTheFaultStays()
{
    const Panels panels;
    const QSignalSpy resets(panels.panel, &Alarm_Error::sendFaultClearSignal);
    panels.report(fault, "0003");
    panels.lamp()->click();
    QCOMPARE(resets.count(), 1);
    QVERIFY(!panels.lamp()->isEnabled());
    panels.report(fault, "0003");
    QVERIFY(panels.isLit());
    panels.report(fault, "0000");
    QVERIFY(panels.isDark());
}

void AlarmErrorTest::missingCatalogueIsTold()
{
    ModalAnswers boxes;
    // So spelt here, and right in the other panels.
    boxes.expect(QStringLiteral("File does not exit"));
    Q_CLEANUP_RESOURCE(catalogue);
    const Panels panels;
    Q_INIT_RESOURCE(catalogue);
    QVERIFY(boxes.isDone());
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Open Failed"));
    QCOMPARE(boxes.seen.first().icon, QMessageBox::Warning);
}

void AlarmErrorTest::missingCatalogueShowsNoText()
{
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("File does not exit"));
    Q_CLEANUP_RESOURCE(catalogue);
    const Panels panels;
    Q_INIT_RESOURCE(catalogue);
    panels.report(fault, "0003");
    QCOMPARE(panels.texts("fault"), none);
    QVERIFY(panels.isDark());
}

QTEST_MAIN(AlarmErrorTest)

#include "tst_alarm_error.moc"
