// SPDX-License-Identifier: GPL-3.0-or-later
// The gain tuning window alone: what its widgets show, what its buttons send.
#include "gainbench.h"
#include "support/modalanswers.h"

#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMetaMethod>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QtCharts/QChartView>

namespace {

const QStringList gainNames{"InertiaRatio",
                            "PositionLoopGain",
                            "SpeedLoopGain",
                            "SpeedLoopIntegralTime",
                            "TorqueFilterTime",
                            "SpeedFeedforwardGain",
                            "SpeedFeedforwardFilterTime"};
const QStringList tableGains = gainNames.mid(1, 4);

QStringList notchNames()
{
    QStringList names;
    for (int notch = 1; notch <= 4; ++notch) {
        for (const char *kind : {"Frequency", "WidthGrade", "DeepGrade"})
            names.append(QStringLiteral("Notch%1%2").arg(notch).arg(QLatin1String(kind)));
    }
    return names;
}

QByteArray store(int address, int value)
{
    QByteArray bytes = wire::bytes("01 10");
    bytes.append(char(address >> 8)).append(char(address)).append(wire::bytes("00 01 02"));
    return wire::frame(bytes.append(char(value >> 8)).append(char(value)));
}

QString message(const char *range)
{
    return QStringLiteral("Input value execteeds the range!\nRange: ") + QLatin1String(range);
}

// A drive as it might stand: manual gains, manual notches, offline.
QMap<int, int> plainDrive()
{
    QMap<int, int> registers{{0x2258, 0},   {0x2259, 12},  {0x225A, 35},  {0x2262, 480}, {0x2263, 270},
                             {0x2264, 210}, {0x21F6, 84},  {0x227D, 5},   {0x227E, 50},  {0x225D, 500},
                             {0x225E, 100}, {0x225F, 10},  {0x2260, 300}, {0x225C, 1},   {0x22AE, 0},
                             {0x2618, 325}, {0x2601, 440}, {0x2600, 11},  {0x2602, 22},  {0x2296, 0}};
    for (int i = 0; i < 12; ++i)
        registers.insert(0x2297 + i, i % 3 == 0 ? 1000 + i : 20 + i);
    return registers;
}

} // namespace

class GainTuningTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void signalsAndSlotsStandInTheirOrder();
    void windowIsBuiltAsTold();
    void everyRowHasItsLabel();
    void tableHeadersStayAsTheyAre();
    void everythingCanBeReachedAtAnySize_data();
    void everythingCanBeReachedAtAnySize();
    void firstReadFillsEveryField();
    void framesCarryTheWindowsName();
    void comboBoxSetByAReplyWritesNothing();
    void onlineModeOfTheDriveSwitchesTheWidgets();
    void roundShowsRatioAndResonance();
    void tableEditIsWritten_data();
    void tableEditIsWritten();
    void tableEditOutOfRangeIsToldAndEmptied();
    void tableEditInNormalFormSendsOneFrame();
    void onlyTheValueColumnCanBeEdited();
    void comboBoxesWriteTheirIndex_data();
    void comboBoxesWriteTheirIndex();
    void leavingTheOnlineModeWritesItsZeroOnce();
    void goingOnlineWritesNothing();
    void calculatedRatioIsAdoptedCut_data();
    void calculatedRatioIsAdoptedCut();
    void calculatedRatioIsNotRounded();
    void calculatedRatioOutOfRangeIsRefused();
    void gainModeSwitchesTheFields();
    void unknownGainModeLeavesTheBox();
    void gradeFillsTheGainsInTableModeOnly();
    void manualGainsAllGoOut();
    void tableModeSendsGradeAndThreeGains();
    void withoutAModeNothingIsSent();
    void failingGainIsToldAndNothingGoesOut();
    void notchModeSwitchesTheFields_data();
    void notchModeSwitchesTheFields();
    void notchFramesFollowTheMode_data();
    void notchFramesFollowTheMode();
    void notchOutOfRangeIsTold();
    void notchButtonWithoutAModeStaysDisabled();
    void nothingHappensDuringTheFirstRead();
    void wheelChangesNothing();
    void closedWindowSendsNothingMore_data();
    void closedWindowSendsNothingMore();
    void focusRules();
    void maximizedWindowReportsItsTitle();
};

void GainTuningTest::initTestCase()
{
    // Numbers have a point all the same.
    QLocale::setDefault(QLocale(QLocale::German));
}

void GainTuningTest::signalsAndSlotsStandInTheirOrder()
{
    const QMetaObject &meta = GainTuning::staticMetaObject;
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        found.append(QString::fromLatin1(meta.method(i).methodSignature()));
    const QStringList expected{"writeToSerialPort(QByteArray,QString)",
                               "writeToSerialPort(QByteArray)",
                               "windowStateChanged(QString)",
                               "resize()",
                               "on_tableWidget_cellDoubleClicked(int,int)",
                               "on_radioButtonOffline_clicked(bool)",
                               "on_radioButtonOnline_clicked(bool)",
                               "on_spinBoxRigidityGrade_valueChanged(int)",
                               "on_comBoxoffline_currentIndexChanged(int)",
                               "on_comBoxGainMode_currentIndexChanged(int)",
                               "on_btnCalculatedToCurrent_clicked()",
                               "on_pbtnSettingsToCurrent_clicked()",
                               "on_comBoxNotchMode_currentIndexChanged(int)",
                               "on_pbtnSettingsToCurrent_Notch_clicked()",
                               "handleGaintuning(QByteArray,int)",
                               "writeToSerial_ReadInertia()",
                               "writeToSerial_ReadGainMode()",
                               "writeToSerial_ReadVibration()",
                               "writeToSerial()",
                               "on_comBoxonline_currentIndexChanged(int)",
                               "on_tableWidget_itemChanged(QTableWidgetItem*)",
                               "timeout_count()"};
    QCOMPARE(found, expected);
}

void GainTuningTest::windowIsBuiltAsTold()
{
    GainBench bench;
    QCOMPARE(bench.window.windowTitle(), QStringLiteral("Gain Tuning"));
    QCOMPARE(bench.window.styleSheet(), QStringLiteral("font:\"微软雅黑\";"));
    QCOMPARE(bench.find<QWidget>("scrollAreaWidgetContents")->minimumWidth(), 950);
    for (const char *group : {"groupInertiaIdentification", "groupGainMode", "groupVibrationSuppression"})
        QVERIFY(bench.find<QWidget>(group));
    const QList<QPair<const char *, QStringList>> boxes{
        {"comBoxoffline", {"0 : Constant Torque Positive and Negative Triangular Wave", "1 : JOG Mode"}},
        {"comBoxonline",
         {"0 : Online Closed", "1 : Elementary Invariant", "2 : Variation Slow", "3 : Variation Fast"}},
        {"comBoxGainMode", {"0 : Manual adjustment", "1 : Rigid table"}},
        {"comBoxNotchMode",
         {"0 : Manual setting", "1 : Notch-filter3 adaptive setting",
          "2 : Notch-filter3 and Notch-filter4 adaptive setting", "3 : Adaptive setting",
          "4 : Adaptive setting"}}};
    for (const auto &[name, items] : boxes) {
        QStringList found;
        for (int i = 0; i < bench.combo(name)->count(); ++i)
            found.append(bench.combo(name)->itemText(i));
        QCOMPARE(found, items);
    }
    QCOMPARE(bench.combo("comBoxGainMode")->currentIndex(), -1);
    QCOMPARE(bench.combo("comBoxNotchMode")->currentIndex(), -1);
    const QList<QPair<const char *, const char *>> labels{
        {"labOfflineMode", "Offline Inertia Identification Mode"},
        {"labOnlineMode", "Online Inertia Identification Mode"},
        {"labGainAdjustmentMode", "Gain Adjustment Mode"},
        {"labRigidityGrade", "Rigidity Grade"},
        {"labSettings", "Settings"},
        {"labCurrentValue_gain", "Current Value"},
        {"labAdaptiveNotchMode", "Adaptive Notch Mode"},
        {"labResonanceFrequency", "Resonance Frequency"},
        {"labSettings_Notch", "Settings"},
        {"labCurrentValue_Notch", "Current Value"}};
    for (const auto &[name, text] : labels)
        QCOMPARE(bench.find<QLabel>(name)->text(), QLatin1String(text));
    QCOMPARE(bench.find<QSpinBox>("spinBoxRigidityGrade")->minimum(), 0);
    QCOMPARE(bench.find<QSpinBox>("spinBoxRigidityGrade")->maximum(), 31);
    QVERIFY(bench.find<QtCharts::QChartView>("chartViewBar")->chart());
    for (const QString &name : gainNames + notchNames()) {
        QVERIFY2(!bench.edit("set" + name)->isReadOnly(), qPrintable(name));
        QVERIFY2(bench.edit("cur" + name)->isReadOnly(), qPrintable(name));
    }
    for (const char *name :
         {"btnCalculatedToCurrent", "pbtnSettingsToCurrent", "pbtnSettingsToCurrent_Notch"})
        QCOMPARE(bench.button(name)->text(), QStringLiteral("==>"));
    const auto *const table = bench.find<QTableWidget>("tableWidget");
    const QStringList heads{"Parameter", " Range ", " Unit ", " Value "};
    for (int column = 0; column < 4; ++column)
        QCOMPARE(table->horizontalHeaderItem(column)->text(), heads.at(column));
    const QStringList rows[4] = {{"Maximum speed", "100 ~ 1000", "1rpm"},
                                 {"Acceleration and deceleration time", "20 ~ 800", "1ms"},
                                 {"Motor stroke", "0 ~ 100", "1r"},
                                 {"Interval time", "50 ~ 5000", "1ms"}};
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 3; ++column)
            QCOMPARE(table->item(row, column)->text(), rows[row].at(column));
    }
}

void GainTuningTest::everyRowHasItsLabel()
{
    const GainBench bench;
    QMap<QString, QString> labels{
        {"labCalculated", "Calculated Value"},
        {"labCurrent", "Current Value"},
        {"labInertiaRatio", "Inertia Ratio"},
        {"labInertiaRatio_gain", "Inertia Ratio"},
        {"labPositionLoopGain", "Position Loop Gain"},
        {"labSpeedLoopGain", "Speed Loop Gain"},
        {"labSpeedLoopIntegralTime", "Integral Time Constant of Speed Loop"},
        {"labTorqueFilterTime", "Time Constant of Torque Instruction Filtering"},
        {"labSpeedFeedforwardGain", "Speed Feedforward Gain"},
        {"labSpeedFeedforwardFilterTime", "Time Constant of Speed Feedforward Filtering"}};
    for (int notch = 1; notch <= 4; ++notch) {
        labels.insert(QStringLiteral("labNotch%1Frequency").arg(notch),
                      QStringLiteral("Notch%1 Frequency").arg(notch));
        labels.insert(QStringLiteral("labNotch%1WidthGrade").arg(notch),
                      QStringLiteral("Notch%1 Width Grade").arg(notch));
        labels.insert(QStringLiteral("labNotch%1DeepGrade").arg(notch),
                      QStringLiteral("Notch%1 Deep Grade").arg(notch));
    }
    for (auto it = labels.constBegin(); it != labels.constEnd(); ++it) {
        const auto *const label = bench.window.findChild<QLabel *>(it.key());
        QVERIFY2(label, qPrintable(it.key()));
        QCOMPARE(label->text(), it.value());
    }
    // Each beside its fields, not only somewhere.
    for (const QString &name : gainNames + notchNames()) {
        const auto *const label = bench.window.findChild<QLabel *>(
            name == QLatin1String("InertiaRatio") ? QStringLiteral("labInertiaRatio_gain") : "lab" + name);
        for (const char *column : {"set", "cur"}) {
            const QLineEdit *const edit = bench.edit(column + name);
            QVERIFY2(qAbs(edit->geometry().center().y() - label->geometry().center().y()) <= 2,
                     qPrintable(column + name));
        }
    }
}

void GainTuningTest::tableHeadersStayAsTheyAre()
{
    const GainBench bench;
    const auto *const table = bench.find<QTableWidget>("tableWidget");
    for (const QHeaderView *header : {table->horizontalHeader(), table->verticalHeader()}) {
        QVERIFY(!header->sectionsClickable());
        QVERIFY(!header->sectionsMovable());
        for (int section = 0; section < header->count(); ++section)
            QVERIFY(header->sectionResizeMode(section) != QHeaderView::Interactive);
    }
}

void GainTuningTest::everythingCanBeReachedAtAnySize_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("1024 x 768, framed and below the bars") << QSize(1000, 560);
    QTest::newRow("4K") << QSize(3800, 2000);
    QTest::newRow("narrower than its content") << QSize(500, 300);
}

void GainTuningTest::everythingCanBeReachedAtAnySize()
{
    QFETCH(QSize, size);
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.window.QWidget::resize(size);
    bench.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bench.window));
    auto *const area = bench.find<QScrollArea>("scrollArea");
    QCOMPARE(area->horizontalScrollBar()->maximum() > 0, size.width() < 950);
    QCOMPARE(area->verticalScrollBar()->maximum() > 0, size.height() < 1000);
    const QList<QWidget *> widgets = area->widget()->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        const bool isOperated = qobject_cast<QLineEdit *>(widget) || qobject_cast<QComboBox *>(widget) ||
                                qobject_cast<QAbstractButton *>(widget) || qobject_cast<QLabel *>(widget);
        if (!isOperated || !widget->isVisible() || widget->objectName().startsWith(QLatin1String("qt_")))
            continue;
        QVERIFY2(widget->width() >= widget->minimumSizeHint().width() &&
                     widget->height() >= widget->minimumSizeHint().height(),
                 qPrintable(QStringLiteral("%1: %2 x %3 of %4 x %5")
                                .arg(widget->objectName())
                                .arg(widget->width())
                                .arg(widget->height())
                                .arg(widget->minimumSizeHint().width())
                                .arg(widget->minimumSizeHint().height())));
        area->ensureWidgetVisible(widget, 0, 0);
        QVERIFY2(!widget->visibleRegion().isEmpty(), qPrintable(widget->objectName()));
    }
    const auto *const table = bench.find<QTableWidget>("tableWidget");
    QCOMPARE(table->verticalScrollBar()->maximum(), 0);
    QCOMPARE(table->horizontalScrollBar()->maximum(), 0);
}

void GainTuningTest::firstReadFillsEveryField()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    const QStringList gains{"3.5", "48.0", "27.0", "21.0", "0.84", "0.5", "0.50"};
    for (int i = 0; i < gains.size(); ++i) {
        QCOMPARE(bench.edit("set" + gainNames.at(i))->text(), gains.at(i));
        QCOMPARE(bench.edit("cur" + gainNames.at(i))->text(), gains.at(i));
    }
    const QStringList names = notchNames();
    for (int i = 0; i < names.size(); ++i) {
        const QString value = QString::number(i % 3 == 0 ? 1000 + i : 20 + i);
        QCOMPARE(bench.edit("set" + names.at(i))->text(), value);
        QCOMPARE(bench.edit("cur" + names.at(i))->text(), value);
    }
    QCOMPARE(bench.text("lineEditCurrent"), QStringLiteral("3.5"));
    QCOMPARE(bench.text("calculated"), QStringLiteral("3.25"));
    QCOMPARE(bench.text("ResonanceFrequency"), QStringLiteral("440"));
    QCOMPARE(bench.cell(0)->text(), QStringLiteral("500"));
    QCOMPARE(bench.cell(1)->text(), QStringLiteral("100"));
    QCOMPARE(bench.cell(2)->text(), QStringLiteral("10"));
    QCOMPARE(bench.cell(3)->text(), QStringLiteral("300"));
    QCOMPARE(bench.combo("comBoxoffline")->currentIndex(), 1);
    QCOMPARE(bench.combo("comBoxonline")->currentIndex(), 0);
    QCOMPARE(bench.combo("comBoxGainMode")->currentIndex(), 0);
    QCOMPARE(bench.combo("comBoxNotchMode")->currentIndex(), 0);
    QCOMPARE(bench.find<QSpinBox>("spinBoxRigidityGrade")->value(), 12);
}

void GainTuningTest::framesCarryTheWindowsName()
{
    GainBench bench;
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.answerAll();
    QCOMPARE(bench.names.size(), 33);
    for (const QString &name : qAsConst(bench.names))
        QCOMPARE(name, QStringLiteral("Gain Tuning"));
}

void GainTuningTest::comboBoxSetByAReplyWritesNothing()
{
    GainBench bench;
    bench.registers = {{0x2258, 1}, {0x225C, 1}, {0x22AE, 3}, {0x2296, 2}, {0x2259, 31}};
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.answerAll();
    QCOMPARE(bench.frames.size(), 33);
    for (const QByteArray &frame : qAsConst(bench.frames))
        QCOMPARE(frame.at(1), '\x03');
    QCOMPARE(bench.combo("comBoxonline")->currentIndex(), 3);
    QCOMPARE(bench.combo("comBoxNotchMode")->currentIndex(), 2);
}

void GainTuningTest::onlineModeOfTheDriveSwitchesTheWidgets()
{
    GainBench bench;
    bench.registers = {{0x22AE, 2}};
    bench.finishInitialRead();
    QVERIFY(bench.find<QRadioButton>("radioButtonOnline")->isChecked());
    QVERIFY(!bench.find<QRadioButton>("radioButtonOffline")->isChecked());
    QCOMPARE(bench.combo("comBoxonline")->currentIndex(), 2);
    QVERIFY(bench.combo("comBoxonline")->isEnabled());
    QVERIFY(!bench.combo("comBoxoffline")->isEnabled());
    QVERIFY(!bench.find<QTableWidget>("tableWidget")->isEnabled());
    QVERIFY(!bench.button("btnCalculatedToCurrent")->isEnabled());
}

void GainTuningTest::roundShowsRatioAndResonance()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.registers[0x2618] = 1234;
    bench.registers[0x2601] = 512;
    bench.registers[0x225A] = 999;
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.answerAll();
    QCOMPARE(bench.text("calculated"), QStringLiteral("12.34"));
    QCOMPARE(bench.text("ResonanceFrequency"), QStringLiteral("512"));
    QCOMPARE(bench.text("lineEditCurrent"), QStringLiteral("3.5"));
}

void GainTuningTest::tableEditIsWritten_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("speed") << 0 << "100" << store(0xE25D, 100);
    QTest::newRow("ramp") << 1 << "800" << store(0xE25E, 800);
    QTest::newRow("stroke") << 2 << "0" << store(0xE25F, 0);
    QTest::newRow("interval") << 3 << "5000" << store(0xE260, 5000);
}

void GainTuningTest::tableEditIsWritten()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.cell(row)->setText(text);
    QTEST(bench.takeFrames().value(0), "frame");
    QCOMPARE(bench.unanswered.size(), 1);
}

void GainTuningTest::tableEditOutOfRangeIsToldAndEmptied()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    for (const char *text : {"99", "1001", "abc", "100.5"}) {
        ModalAnswers boxes;
        boxes.expect(message("100 ~ 1000"));
        bench.cell(0)->setText(QLatin1String(text));
        QCOMPARE(boxes.seen.size(), 1);
        QCOMPARE(boxes.seen.first().title, QStringLiteral("Maxinum speed"));
        QCOMPARE(boxes.seen.first().icon, QMessageBox::Warning);
        QCOMPARE(bench.cell(0)->text(), QString());
    }
    QVERIFY(bench.frames.isEmpty());
}

void GainTuningTest::tableEditInNormalFormSendsOneFrame()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.cell(0)->setText(QStringLiteral("+0500"));
    QCOMPARE(bench.cell(0)->text(), QStringLiteral("500"));
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE25D, 500)});
}

void GainTuningTest::onlyTheValueColumnCanBeEdited()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.window.show();
    auto *const table = bench.find<QTableWidget>("tableWidget");
    QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(table->selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
    for (int column = 3; column >= 0; --column) {
        const QPoint place = table->visualItemRect(table->item(1, column)).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
        QCOMPARE(table->viewport()->findChildren<QLineEdit *>().size(), column == 3 ? 1 : 0);
        if (column == 3) {
            auto *const editor = table->viewport()->findChild<QLineEdit *>();
            editor->setText(QStringLiteral("250"));
            QTest::keyClick(editor, Qt::Key_Return);
            QTRY_VERIFY(!bench.frames.isEmpty());
            QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE25E, 250)});
            QTRY_VERIFY(!table->viewport()->findChild<QLineEdit *>());
        }
    }
}

void GainTuningTest::comboBoxesWriteTheirIndex_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("frame");
    for (int index = 0; index < 2; ++index) {
        QTest::addRow("offline %d", index)
            << QByteArray("comBoxoffline") << 1 - index << index << store(0xE25C, index);
        QTest::addRow("gain mode %d", index)
            << QByteArray("comBoxGainMode") << 1 - index << index << store(0xE258, index);
    }
    for (int index = 0; index < 4; ++index)
        QTest::addRow("online %d", index)
            << QByteArray("comBoxonline") << (index + 1) % 4 << index << store(0xE2AE, index);
    for (int index = 0; index < 5; ++index)
        QTest::addRow("notch mode %d", index)
            << QByteArray("comBoxNotchMode") << (index + 1) % 5 << index << store(0xE296, index);
}

void GainTuningTest::comboBoxesWriteTheirIndex()
{
    QFETCH(QByteArray, name);
    QFETCH(int, before);
    QFETCH(int, index);
    GainBench bench;
    bench.registers = {{0x225C, before}, {0x2258, before}, {0x22AE, before}, {0x2296, before}};
    bench.finishInitialRead();
    QCOMPARE(bench.combo(name)->currentIndex(), before);
    bench.combo(name)->setCurrentIndex(index);
    QCOMPARE(bench.frames.size(), 1);
    QTEST(bench.frames.first(), "frame");
}

void GainTuningTest::leavingTheOnlineModeWritesItsZeroOnce()
{
    GainBench bench;
    bench.registers = {{0x22AE, 2}};
    bench.finishInitialRead();
    bench.find<QRadioButton>("radioButtonOffline")->click();
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE2AE, 0)});
    QCOMPARE(bench.combo("comBoxonline")->currentIndex(), 0);
    QVERIFY(bench.combo("comBoxoffline")->isEnabled());
    QVERIFY(!bench.combo("comBoxonline")->isEnabled());
    QVERIFY(bench.find<QTableWidget>("tableWidget")->isEnabled());
    QVERIFY(bench.button("btnCalculatedToCurrent")->isEnabled());
}

void GainTuningTest::goingOnlineWritesNothing()
{
    GainBench bench;
    bench.finishInitialRead();
    bench.find<QRadioButton>("radioButtonOnline")->click();
    QVERIFY(bench.frames.isEmpty());
    QVERIFY(bench.combo("comBoxonline")->isEnabled());
    QVERIFY(!bench.combo("comBoxoffline")->isEnabled());
    bench.combo("comBoxonline")->setCurrentIndex(1);
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE2AE, 1)});
}

void GainTuningTest::calculatedRatioIsAdoptedCut_data()
{
    QTest::addColumn<int>("ratio"); // hundredths
    QTest::addColumn<int>("written");
    QTest::addColumn<QString>("shown");
    QTest::newRow("3.27") << 327 << 32 << "3.3";
    QTest::newRow("3.21") << 321 << 32 << "3.2";
    QTest::newRow("1.00") << 100 << 10 << "1.0";
    QTest::newRow("120.00") << 12000 << 1200 << "120.0";
}

void GainTuningTest::calculatedRatioIsAdoptedCut()
{
    QFETCH(int, ratio);
    QFETCH(int, written);
    QFETCH(QString, shown);
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2618] = ratio;
    bench.finishInitialRead();
    bench.button("btnCalculatedToCurrent")->click();
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE25A, written)});
    QCOMPARE(bench.text("lineEditCurrent"), shown);
    QCOMPARE(bench.text("curInertiaRatio"), shown);
    QCOMPARE(bench.text("setInertiaRatio"), shown);
    QCOMPARE(bench.text("calculated"), QString::number(ratio / 100.0, 'f', 2));
}

void GainTuningTest::calculatedRatioIsNotRounded()
{
    GainBench bench;
    bench.registers = plainDrive(); // 3.25
    bench.finishInitialRead();
    bench.button("btnCalculatedToCurrent")->click();
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{wire::frame("01 10 E2 5A 00 01 02 00 20")});
}

void GainTuningTest::calculatedRatioOutOfRangeIsRefused()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2618] = 99;
    bench.finishInitialRead();
    ModalAnswers boxes;
    boxes.expect(message("1.0 ~ 120.0"));
    bench.button("btnCalculatedToCurrent")->click();
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Calculated"));
    QVERIFY(bench.frames.isEmpty());
    QCOMPARE(bench.text("lineEditCurrent"), QStringLiteral("3.5"));
}

void GainTuningTest::gainModeSwitchesTheFields()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    for (const int index : {1, 0}) {
        bench.combo("comBoxGainMode")->setCurrentIndex(index);
        const bool isManual = index == 0;
        for (const QString &name : tableGains) {
            QCOMPARE(bench.edit("set" + name)->isEnabled(), isManual);
            QCOMPARE(bench.edit("set" + name)->palette().color(QPalette::Text),
                     QColor(isManual ? Qt::black : Qt::gray));
        }
        QVERIFY(bench.edit(QStringLiteral("setInertiaRatio"))->isEnabled());
        QCOMPARE(bench.find<QSpinBox>("spinBoxRigidityGrade")->isEnabled(), !isManual);
    }
}

void GainTuningTest::unknownGainModeLeavesTheBox()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2258] = 2;
    bench.finishInitialRead();
    QCOMPARE(bench.combo("comBoxGainMode")->currentIndex(), -1);
    QCOMPARE(bench.text("setPositionLoopGain"), QStringLiteral("48.0"));
}

void GainTuningTest::gradeFillsTheGainsInTableModeOnly()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    auto *const grade = bench.find<QSpinBox>("spinBoxRigidityGrade");
    grade->setValue(16);
    QCOMPARE(bench.text("setPositionLoopGain"), QStringLiteral("48.0"));
    bench.combo("comBoxGainMode")->setCurrentIndex(1);
    QCOMPARE(bench.text("setPositionLoopGain"), QStringLiteral("90.0"));
    bench.frames.clear();
    grade->setValue(25);
    QCOMPARE(bench.text("setPositionLoopGain"), QStringLiteral("500.0"));
    QCOMPARE(bench.text("setSpeedLoopGain"), QStringLiteral("280.0"));
    QCOMPARE(bench.text("setSpeedLoopIntegralTime"), QStringLiteral("3.5"));
    QCOMPARE(bench.text("setTorqueFilterTime"), QStringLiteral("0.08"));
    QCOMPARE(bench.text("curPositionLoopGain"), QStringLiteral("48.0"));
    QVERIFY(bench.frames.isEmpty());
}

void GainTuningTest::manualGainsAllGoOut()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    const QStringList texts{"4.2", "50", "30.55", "12", "0.45", "10", "1"};
    for (int i = 0; i < texts.size(); ++i)
        bench.edit("set" + gainNames.at(i))->setText(texts.at(i));
    bench.button("pbtnSettingsToCurrent")->click();
    QVERIFY(!bench.button("pbtnSettingsToCurrent")->isEnabled());
    QVERIFY(bench.frames.isEmpty());
    // Shown at once, without waiting for the drive, in the form of their fields.
    QCOMPARE(bench.text("curInertiaRatio"), QStringLiteral("4.2"));
    QCOMPARE(bench.text("lineEditCurrent"), QStringLiteral("4.2"));
    QCOMPARE(bench.text("curPositionLoopGain"), QStringLiteral("50.0"));
    QCOMPARE(bench.text("curTorqueFilterTime"), QStringLiteral("0.45"));
    QCOMPARE(bench.text("curSpeedFeedforwardFilterTime"), QStringLiteral("1.00"));
    QTRY_VERIFY(bench.button("pbtnSettingsToCurrent")->isEnabled() || !bench.unanswered.isEmpty());
    bench.answerAll();
    QVERIFY(bench.button("pbtnSettingsToCurrent")->isEnabled());
    QList<QByteArray> writes;
    for (const QByteArray &frame : bench.takeFrames()) {
        if (frame.at(1) == '\x10')
            writes.append(frame);
    }
    QCOMPARE(writes.size(), 7);
    QCOMPARE(writes.at(0), store(0xE25A, 42));
    QCOMPARE(writes.at(1), store(0xE262, 500));
    QVERIFY(writes.at(2) == store(0xE263, 305) || writes.at(2) == store(0xE263, 306));
    QCOMPARE(writes.at(3), store(0xE264, 120));
    QCOMPARE(writes.at(4), store(0xE1F6, 45));
    QCOMPARE(writes.at(5), store(0xE27D, 100));
    QCOMPARE(writes.at(6), store(0xE27E, 100));
}

void GainTuningTest::tableModeSendsGradeAndThreeGains()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2258] = 1;
    bench.finishInitialRead();
    bench.find<QSpinBox>("spinBoxRigidityGrade")->setValue(20);
    bench.button("pbtnSettingsToCurrent")->click();
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE259, 20)});
    for (const QByteArray &expected : {store(0xE25A, 35), store(0xE27D, 5), store(0xE27E, 50)}) {
        bench.answer();
        QCOMPARE(bench.takeFrames(), QList<QByteArray>{expected});
        QVERIFY(!bench.button("pbtnSettingsToCurrent")->isEnabled());
    }
    bench.answer();
    QVERIFY(bench.button("pbtnSettingsToCurrent")->isEnabled());
    // The drive has them by the grade.
    QCOMPARE(bench.text("curPositionLoopGain"), QStringLiteral("206.0"));
    QCOMPARE(bench.text("curTorqueFilterTime"), QStringLiteral("0.20"));
}

void GainTuningTest::withoutAModeNothingIsSent()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2258] = 2;
    bench.finishInitialRead();
    bench.edit(QStringLiteral("setInertiaRatio"))->setText(QStringLiteral("9"));
    bench.button("pbtnSettingsToCurrent")->click();
    QVERIFY(bench.frames.isEmpty());
    QVERIFY(!bench.button("pbtnSettingsToCurrent")->isEnabled());
    QCOMPARE(bench.text("curInertiaRatio"), QStringLiteral("9.0"));
}

void GainTuningTest::failingGainIsToldAndNothingGoesOut()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.edit(QStringLiteral("setSpeedLoopGain"))->setText(QStringLiteral("1000.1"));
    bench.edit(QStringLiteral("setTorqueFilterTime"))->setText(QString());
    ModalAnswers boxes;
    boxes.expect(message("0.1 ~ 1000.0"));
    bench.button("pbtnSettingsToCurrent")->click();
    QCOMPARE(boxes.seen.size(), 1);
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Speed Loop Gain"));
    QCOMPARE(bench.text("setSpeedLoopGain"), QString());
    QVERIFY(bench.frames.isEmpty());
    QVERIFY(bench.button("pbtnSettingsToCurrent")->isEnabled());
    QCOMPARE(bench.text("curSpeedLoopGain"), QStringLiteral("27.0"));
}

void GainTuningTest::notchModeSwitchesTheFields_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QList<bool>>("editable"); // notches 1 to 4, button
    QTest::newRow("manual") << 0 << QList<bool>{true, true, true, true, true};
    QTest::newRow("third adaptive") << 1 << QList<bool>{true, true, false, true, true};
    QTest::newRow("two adaptive") << 2 << QList<bool>{true, true, false, false, true};
    QTest::newRow("adaptive") << 3 << QList<bool>{false, false, false, false, false};
    QTest::newRow("adaptive too") << 4 << QList<bool>{false, false, false, false, false};
}

void GainTuningTest::notchModeSwitchesTheFields()
{
    QFETCH(int, mode);
    QFETCH(QList<bool>, editable);
    GainBench bench;
    bench.registers = {{0x2296, mode}};
    bench.finishInitialRead();
    const QStringList names = notchNames();
    for (int i = 0; i < names.size(); ++i) {
        QCOMPARE(bench.edit("set" + names.at(i))->isEnabled(), editable.at(i / 3));
        QCOMPARE(bench.edit("set" + names.at(i))->palette().color(QPalette::Text),
                 QColor(editable.at(i / 3) ? Qt::black : Qt::gray));
    }
    QCOMPARE(bench.button("pbtnSettingsToCurrent_Notch")->isEnabled(), editable.at(4));
}

void GainTuningTest::notchFramesFollowTheMode_data()
{
    const QByteArray first = wire::frame("01 10 E2 97 00 06 0C 03 E8 00 15 00 16 03 EB 00 18 00 19");
    const QByteArray third = wire::frame("01 10 E2 9D 00 03 06 04 D2 00 1B 00 1C");
    const QByteArray fourth = wire::frame("01 10 E2 A0 00 03 06 03 F1 00 1E 00 1F");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QList<QByteArray>>("expected");
    QTest::newRow("manual") << 0 << QList<QByteArray>{first, third, fourth};
    QTest::newRow("third adaptive") << 1 << QList<QByteArray>{first, fourth};
    QTest::newRow("two adaptive") << 2 << QList<QByteArray>{first};
}

void GainTuningTest::notchFramesFollowTheMode()
{
    QFETCH(int, mode);
    QFETCH(QList<QByteArray>, expected);
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2296] = mode;
    bench.finishInitialRead();
    bench.edit(QStringLiteral("setNotch3Frequency"))->setText(QStringLiteral("1234"));
    bench.button("pbtnSettingsToCurrent_Notch")->click();
    QVERIFY(!bench.button("pbtnSettingsToCurrent_Notch")->isEnabled());
    QCOMPARE(bench.text("curNotch3Frequency"), mode == 0 ? QStringLiteral("1234") : QStringLiteral("1006"));
    QList<QByteArray> writes;
    QTRY_VERIFY2_WITH_TIMEOUT(
        [&] {
            if (!bench.unanswered.isEmpty())
                bench.answer();
            for (const QByteArray &frame : bench.takeFrames()) {
                if (frame.at(1) == '\x10')
                    writes.append(frame);
            }
            return bench.button("pbtnSettingsToCurrent_Notch")->isEnabled();
        }(),
        "the notch write has not ended", 5000);
    QCOMPARE(writes, expected);
}

void GainTuningTest::notchOutOfRangeIsTold()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2296] = 1;
    bench.finishInitialRead();
    const QList<QStringList> rows{{"setNotch1WidthGrade", "4097", "Notch-filter1 Width Grade", "1 ~ 4096"},
                                  {"setNotch3DeepGrade", "41", "Notch-filter3 Deep Grade", "0 ~ 40"},
                                  {"setNotch4Frequency", "49", "Notch-filter4 Frequency", "50 ~ 5000"}};
    for (const QStringList &row : rows) {
        ModalAnswers boxes;
        boxes.expect(message(qPrintable(row.at(3))));
        const QString before = bench.edit(row.at(0))->text();
        bench.edit(row.at(0))->setText(row.at(1));
        bench.button("pbtnSettingsToCurrent_Notch")->click();
        QCOMPARE(boxes.seen.size(), 1);
        QCOMPARE(boxes.seen.first().title, row.at(2));
        QCOMPARE(bench.edit(row.at(0))->text(), QString());
        QVERIFY(bench.button("pbtnSettingsToCurrent_Notch")->isEnabled());
        bench.edit(row.at(0))->setText(before);
    }
    QVERIFY(bench.frames.isEmpty());
}

void GainTuningTest::notchButtonWithoutAModeStaysDisabled()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2296] = 9;
    bench.finishInitialRead();
    QCOMPARE(bench.combo("comBoxNotchMode")->currentIndex(), -1);
    bench.button("pbtnSettingsToCurrent_Notch")->click();
    QVERIFY(!bench.button("pbtnSettingsToCurrent_Notch")->isEnabled());
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.answerAll();
    QVERIFY(!bench.button("pbtnSettingsToCurrent_Notch")->isEnabled());
    for (const QByteArray &frame : qAsConst(bench.frames))
        QCOMPARE(frame.at(1), '\x03');
}

void GainTuningTest::nothingHappensDuringTheFirstRead()
{
    GainBench bench;
    bench.registers = plainDrive();
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.frames.clear();
    for (const char *name :
         {"btnCalculatedToCurrent", "pbtnSettingsToCurrent", "pbtnSettingsToCurrent_Notch"}) {
        bench.button(name)->click();
        QVERIFY2(bench.button(name)->isEnabled(), name);
    }
    bench.cell(0)->setText(QStringLiteral("99"));
    bench.combo("comBoxoffline")->setCurrentIndex(1);
    QVERIFY(bench.frames.isEmpty());
}

void GainTuningTest::wheelChangesNothing()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2258] = 1;
    bench.registers[0x2296] = 1;
    bench.finishInitialRead();
    bench.window.show();
    const auto turn = [](QWidget *widget, int angle) {
        QWheelEvent wheel(QPointF(5, 5), widget->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, angle),
                          Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(widget, &wheel);
    };
    // The wheel works, were it not switched off.
    QSpinBox other;
    other.show();
    turn(&other, 120);
    QVERIFY(other.value() > 0);
    auto *const grade = bench.find<QSpinBox>("spinBoxRigidityGrade");
    for (const int angle : {-120, 120}) {
        for (const char *name : {"comBoxGainMode", "spinBoxRigidityGrade", "comBoxNotchMode"})
            turn(bench.find<QWidget>(name), angle);
        turn(grade->findChild<QLineEdit *>(), angle);
        QCOMPARE(bench.combo("comBoxGainMode")->currentIndex(), 1);
        QCOMPARE(grade->value(), 12);
        QCOMPARE(bench.combo("comBoxNotchMode")->currentIndex(), 1);
    }
    QVERIFY(bench.frames.isEmpty());
}

void GainTuningTest::closedWindowSendsNothingMore_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("gains") << QByteArray("pbtnSettingsToCurrent");
    QTest::newRow("notches") << QByteArray("pbtnSettingsToCurrent_Notch");
}

void GainTuningTest::closedWindowSendsNothingMore()
{
    QFETCH(QByteArray, button);
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.window.show();
    bench.button(button)->click();
    // The reply of a round starts the write; the next one is under way when the window closes.
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.answer();
    QVERIFY(!bench.button(button)->isEnabled());
    bench.window.close();
    bench.takeFrames();
    // Longer than any pause: another window's first round tells.
    GainBench other;
    other.registers = plainDrive();
    other.finishInitialRead();
    for (int round = 0; round < 2; ++round) {
        QTRY_VERIFY(!other.unanswered.isEmpty());
        other.answerAll();
        while (!bench.unanswered.isEmpty())
            bench.answer();
    }
    QCOMPARE(bench.takeFrames(), QList<QByteArray>());
}

void GainTuningTest::focusRules()
{
    const GainBench bench;
    for (const char *name : {"comBoxGainMode", "spinBoxRigidityGrade", "comBoxNotchMode"})
        QCOMPARE(bench.find<QWidget>(name)->focusPolicy(), Qt::NoFocus);
    for (const QPushButton *button : bench.window.findChildren<QPushButton *>())
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
    for (const QString &name : gainNames + notchNames()) {
        QCOMPARE(bench.edit("set" + name)->focusPolicy(), Qt::ClickFocus);
        QCOMPARE(bench.edit("cur" + name)->focusPolicy(), Qt::ClickFocus);
    }
    for (const char *name : {"calculated", "lineEditCurrent", "ResonanceFrequency"})
        QCOMPARE(bench.find<QWidget>(name)->focusPolicy(), Qt::ClickFocus);
}

void GainTuningTest::maximizedWindowReportsItsTitle()
{
    GainBench bench;
    QSignalSpy states(&bench.window, &GainTuning::windowStateChanged);
    bench.window.showMaximized();
    QTRY_VERIFY(!states.isEmpty());
    QCOMPARE(states.last().first().toString(), QStringLiteral("Gain Tuning"));
    bench.window.showNormal();
    QTRY_COMPARE(states.last().first().toString(), QString());
}

QTEST_MAIN(GainTuningTest)
#include "tst_gaintuning.moc"
