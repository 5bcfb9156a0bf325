// SPDX-License-Identifier: GPL-3.0-or-later
// What the gain tuning window is made of: its widgets and texts, and what wheel, focus and size do to it.
#include "gainbench.h"

#include <QHeaderView>
#include <QLabel>
#include <QMetaMethod>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QtCharts/QChartView>

class GainTuningPageTest : public QObject
{
    Q_OBJECT

private slots:
    void signalsAndSlotsStandInTheirOrder();
    void windowIsBuiltAsTold();
    void everyRowHasItsLabel();
    void tableHeadersStayAsTheyAre();
    void everythingCanBeReachedAtAnySize_data();
    void everythingCanBeReachedAtAnySize();
    void wheelChangesNothing();
    void focusRules();
    void maximizedWindowReportsItsTitle();
};

void GainTuningPageTest::signalsAndSlotsStandInTheirOrder()
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

void GainTuningPageTest::windowIsBuiltAsTold()
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

void GainTuningPageTest::everyRowHasItsLabel()
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

void GainTuningPageTest::tableHeadersStayAsTheyAre()
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

void GainTuningPageTest::everythingCanBeReachedAtAnySize_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("1024 x 768, framed and below the bars") << QSize(1000, 560);
    QTest::newRow("4K") << QSize(3800, 2000);
    QTest::newRow("narrower than its content") << QSize(500, 300);
}

void GainTuningPageTest::everythingCanBeReachedAtAnySize()
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

void GainTuningPageTest::wheelChangesNothing()
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
    const int offline = bench.combo("comBoxoffline")->currentIndex();
    const int online = bench.combo("comBoxonline")->currentIndex();
    for (const int angle : {-120, 120}) {
        for (const char *name :
             {"comBoxoffline", "comBoxonline", "comBoxGainMode", "spinBoxRigidityGrade", "comBoxNotchMode"})
            turn(bench.find<QWidget>(name), angle);
        QCOMPARE(bench.combo("comBoxoffline")->currentIndex(), offline);
        QCOMPARE(bench.combo("comBoxonline")->currentIndex(), online);
        turn(grade->findChild<QLineEdit *>(), angle);
        QCOMPARE(bench.combo("comBoxGainMode")->currentIndex(), 1);
        QCOMPARE(grade->value(), 12);
        QCOMPARE(bench.combo("comBoxNotchMode")->currentIndex(), 1);
    }
    QVERIFY(bench.frames.isEmpty());
}

void GainTuningPageTest::focusRules()
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

void GainTuningPageTest::maximizedWindowReportsItsTitle()
{
    GainBench bench;
    QSignalSpy states(&bench.window, &GainTuning::windowStateChanged);
    bench.window.showMaximized();
    QTRY_VERIFY(!states.isEmpty());
    QCOMPARE(states.last().first().toString(), QStringLiteral("Gain Tuning"));
    bench.window.showNormal();
    QTRY_COMPARE(states.last().first().toString(), QString());
}

QTEST_MAIN(GainTuningPageTest)
#include "tst_gaintuning_page.moc"
