// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/eventcount.h"
#include "widgets/drawingpace.h"
#include "widgets/indicationlable.h"
#include "widgets/labelgrop.h"
#include "widgets/newcombox.h"
#include "widgets/runprogressdialog.h"
#include "widgets/sunkenlabel.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QImage>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

class SmallWidgetsTest : public QObject
{
    Q_OBJECT

private slots:
    void markerFollowsThePosition_data();
    void markerFollowsThePosition();
    void rangeBarIsDrawn();
    void captionStandsAboveTheFramedValue();
    void comboBoxHoldsTheDigitsByDefault();
    void comboBoxHoldsTheItemsGiven();
    void sunkenLabelTakesItsWeightFromAWord_data();
    void sunkenLabelTakesItsWeightFromAWord();
    void runProgressDialogIsPutAwayByItsRunOnly();
    void runProgressDialogAsksForTheEnd_data();
    void runProgressDialogAsksForTheEnd();
    void runProgressDialogNeverShowsItself();
    void runProgressDialogGetsNoButtonWithAnotherLanguage();
    void runProgressDialogStandsOverItsWindow();
    void pacedWidgetIsDrawnTogether();
    void widgetOfALongerPaceIsDrawnLater();
};

void SmallWidgetsTest::markerFollowsThePosition_data()
{
    QTest::addColumn<double>("current");
    QTest::addColumn<double>("span");
    QTest::addColumn<int>("forward");
    QTest::addColumn<int>("rollback");
    QTest::addColumn<double>("x");
    // For a bar of 440 pixels: 400 of them are the marker's way.
    QTest::newRow("no span") << 50.0 << 0.0 << 100 << -100 << 203.0;
    QTest::newRow("in the middle") << 0.0 << 200.0 << 100 << -100 << 203.0;
    QTest::newRow("a quarter forward goes left") << 50.0 << 200.0 << 100 << -100 << 100.0;
    QTest::newRow("a quarter back goes right") << -50.0 << 200.0 << 100 << -100 << 300.0;
    QTest::newRow("at the forward end") << 100.0 << 200.0 << 100 << -100 << 5.0;
    QTest::newRow("beyond the forward end") << 500.0 << 200.0 << 100 << -100 << 5.0;
    QTest::newRow("at the rollback end") << -100.0 << 200.0 << 100 << -100 << 401.0;
    QTest::newRow("beyond the rollback end") << -500.0 << 200.0 << 100 << -100 << 401.0;
    QTest::newRow("middle is a whole number") << 1.0 << 10.0 << 3 << 0 << 203.0;
}

void SmallWidgetsTest::markerFollowsThePosition()
{
    QFETCH(double, current);
    QFETCH(double, span);
    QFETCH(int, forward);
    QFETCH(int, rollback);
    QFETCH(double, x);
    IndicationLable bar;
    bar.currentValue = current;
    bar.spanValue = span;
    bar.forwardValue = forward;
    bar.rollbackValue = rollback;
    QCOMPARE(bar.markerX(440), x);
}

void SmallWidgetsTest::rangeBarIsDrawn()
{
    IndicationLable bar;
    bar.resize(440, 60);
    QImage image(bar.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    bar.render(&image);
    const int depth = int(60 / 1.15);
    QVERIFY(image.pixelColor(100, depth / 2) != QColor(Qt::white));
    QVERIFY(image.pixelColor(3, 4) != QColor(Qt::white));
    QVERIFY(image.pixelColor(437, 4) != QColor(Qt::white));
    // The marker's tip touches the line in the middle of the bar.
    QVERIFY(image.pixelColor(203 + 17, depth / 2 - 10) != QColor(Qt::white));
    QCOMPARE(image.pixelColor(300, depth / 2 - 10), image.pixelColor(100, depth / 2 - 10));
}

void SmallWidgetsTest::captionStandsAboveTheFramedValue()
{
    LabelGrop group(QStringLiteral("Caption"));
    QCOMPARE(group.captionLabel->text(), QStringLiteral("Caption"));
    QCOMPARE(group.captionLabel->alignment(), Qt::AlignHCenter | Qt::AlignVCenter);
    QCOMPARE(group.valueLabel->alignment(), Qt::AlignHCenter | Qt::AlignVCenter);
    QCOMPARE(group.valueLabel->styleSheet(),
             QStringLiteral("background-color:rgb(232, 238, 247);border:2px solid rgb(0, 0, 0)"));
    const auto *const layout = qobject_cast<QVBoxLayout *>(group.layout());
    QVERIFY(layout);
    QCOMPARE(layout->itemAt(0)->widget(), group.captionLabel);
    QCOMPARE(layout->itemAt(1)->widget(), group.valueLabel);
}

void SmallWidgetsTest::comboBoxHoldsTheDigitsByDefault()
{
    NewCombox box(QStringLiteral("Uint:"));
    QCOMPARE(box.comboBox->count(), 10);
    QCOMPARE(box.comboBox->itemText(0), QStringLiteral("0"));
    QCOMPARE(box.comboBox->itemText(9), QStringLiteral("9"));
    QCOMPARE(box.label->text(), QStringLiteral("Uint:"));
    QCOMPARE(box.font().family(), QStringLiteral("Tahoma"));
    QCOMPARE(box.font().pointSize(), 10);
}

void SmallWidgetsTest::comboBoxHoldsTheItemsGiven()
{
    NewCombox box(QStringLiteral("Ten:"), {QStringLiteral("0: a"), QStringLiteral("1: b")});
    QCOMPARE(box.comboBox->count(), 2);
    QCOMPARE(box.comboBox->itemText(1), QStringLiteral("1: b"));
    auto *const layout = qobject_cast<QHBoxLayout *>(box.layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins());
    QCOMPARE(layout->indexOf(box.comboBox), 1);
    QCOMPARE(layout->stretch(1), 1);
}

void SmallWidgetsTest::sunkenLabelTakesItsWeightFromAWord_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<int>("weight");
    QTest::newRow("Black") << "Black" << 95;
    QTest::newRow("black in small letters") << "black" << int(QFont::Normal);
    QTest::newRow("Normal") << "Normal" << int(QFont::Normal);
    QTest::newRow("none") << "" << int(QFont::Normal);
}

void SmallWidgetsTest::sunkenLabelTakesItsWeightFromAWord()
{
    QFETCH(QString, word);
    QFETCH(int, weight);
    const SunkenLabel label(QStringLiteral("text"), word, 12);
    QCOMPARE(label.text(), QStringLiteral("text"));
    QCOMPARE(label.font().weight(), weight);
    QCOMPARE(label.font().pointSize(), 12);
    QCOMPARE(label.font().family(), QStringLiteral("Tahoma"));
    QCOMPARE(label.frameStyle(), int(QFrame::Panel) | int(QFrame::Sunken));
    QCOMPARE(label.margin(), 2);
    QCOMPARE(label.alignment(), Qt::AlignHCenter | Qt::AlignVCenter);
}

void SmallWidgetsTest::runProgressDialogIsPutAwayByItsRunOnly()
{
    RunProgressDialog dialog;
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.windowModality(), Qt::ApplicationModal);
    QVERIFY(dialog.findChildren<QPushButton *>().isEmpty());
    dialog.setRange(0, 9);
    dialog.show();
    dialog.showValue(4);
    QCOMPARE(dialog.value(), 4);
    dialog.finish();
    QVERIFY(!dialog.isVisible());
    dialog.show();
    QVERIFY(dialog.isVisible());
}

void SmallWidgetsTest::runProgressDialogAsksForTheEnd_data()
{
    QTest::addColumn<bool>("isSecondShowing");
    QTest::addColumn<QString>("way");
    for (const char *way : {"escape", "title bar", "close"}) {
        QTest::addRow("%s", way) << false << way;
        QTest::addRow("%s after an earlier end", way) << true << way;
    }
}

void SmallWidgetsTest::runProgressDialogAsksForTheEnd()
{
    QFETCH(const bool, isSecondShowing);
    QFETCH(const QString, way);
    RunProgressDialog dialog;
    const QSignalSpy requests(&dialog, &RunProgressDialog::endRequested);
    if (isSecondShowing) {
        const auto end =
            connect(&dialog, &RunProgressDialog::endRequested, &dialog, &RunProgressDialog::finish);
        dialog.show();
        dialog.close();
        disconnect(end);
        QVERIFY(!dialog.isVisible());
    }
    dialog.show();
    // As often as it is asked: the run may go on for a moment.
    for (int i = 0; i < 2; ++i) {
        const int before = requests.count();
        if (way == QLatin1String("escape")) {
            QTest::keyClick(&dialog, Qt::Key_Escape);
        } else if (way == QLatin1String("close")) {
            QVERIFY(!dialog.close());
        } else {
            QCloseEvent fromTitleBar;
            QSpontaneKeyEvent::setSpontaneous(&fromTitleBar);
            QVERIFY(qApp->notify(&dialog, &fromTitleBar));
            QVERIFY(!fromTitleBar.isAccepted());
        }
        QCOMPARE(requests.count(), before + 1);
        QVERIFY(dialog.isVisible());
    }
}

// Qt's own would after some seconds, with the timer that it has as its child.
void SmallWidgetsTest::runProgressDialogNeverShowsItself()
{
    RunProgressDialog dialog;
    const auto *const timer = dialog.findChild<QTimer *>();
    QVERIFY(timer);
    QVERIFY(!timer->isActive());
    dialog.setRange(0, 9);
    dialog.showValue(4);
    QVERIFY(!timer->isActive());
    dialog.show();
    dialog.finish();
    QVERIFY(!timer->isActive());
    dialog.setRange(0, 5);
    dialog.showValue(1);
    QVERIFY(!timer->isActive());
    QVERIFY(!dialog.isVisible());
}

void SmallWidgetsTest::runProgressDialogGetsNoButtonWithAnotherLanguage()
{
    RunProgressDialog dialog;
    dialog.show();
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&dialog, &change);
    QVERIFY(dialog.findChildren<QPushButton *>().isEmpty());
    QVERIFY(dialog.isVisible());
}

void SmallWidgetsTest::runProgressDialogStandsOverItsWindow()
{
    QWidget first;
    auto *const inside = new QWidget(&first);
    QWidget second;
    first.setGeometry(100, 100, 500, 300);
    second.setGeometry(300, 200, 400, 200);
    first.show();
    second.show();
    RunProgressDialog dialog(&first);
    for (QWidget *window : {&second, inside, &second}) {
        dialog.showOver(window);
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.windowHandle()->transientParent(), window->window()->windowHandle());
        const QPoint middle = window->window()->geometry().center();
        QVERIFY((dialog.geometry().center() - middle).manhattanLength() <= 4);
        dialog.finish();
    }
}

void SmallWidgetsTest::pacedWidgetIsDrawnTogether()
{
    QWidget widget;
    widget.resize(50, 50);
    widget.show();
    QCoreApplication::processEvents();
    const EventCount drawn(&widget, QEvent::Paint);
    DrawingPace pace(&widget);
    const auto change = [&] {
        pace.touch();
        widget.update();
        QCoreApplication::sendPostedEvents();
    };
    change();
    QCOMPARE(drawn.count, 1);
    for (int i = 0; i < 10; ++i)
        change();
    QCOMPARE(drawn.count, 1);
    QTRY_COMPARE(drawn.count, 2);
    QVERIFY(widget.updatesEnabled());
}

void SmallWidgetsTest::widgetOfALongerPaceIsDrawnLater()
{
    constexpr int longInterval = 3600000; // ms
    QWidget slow;
    QWidget quick;
    for (QWidget *widget : {&slow, &quick})
        widget->show();
    QCoreApplication::processEvents();
    const EventCount slowDrawn(&slow, QEvent::Paint);
    const EventCount quickDrawn(&quick, QEvent::Paint);
    DrawingPace slowPace(&slow, longInterval);
    DrawingPace quickPace(&quick);
    for (int i = 0; i < 2; ++i) {
        slowPace.touch();
        quickPace.touch();
        slow.update();
        quick.update();
        QCoreApplication::sendPostedEvents();
    }
    QTRY_COMPARE(quickDrawn.count, 2);
    QCOMPARE(slowDrawn.count, 1);
}

QTEST_MAIN(SmallWidgetsTest)
#include "tst_smallwidgets.moc"
