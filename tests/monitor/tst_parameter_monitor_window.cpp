// SPDX-License-Identifier: GPL-3.0-or-later
// The monitor as a window: its form, its start and its end, its states and its scroll bars.
#include "monitorbench.h"
#include "support/modalanswers.h"
#include "support/signallog.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QScrollBar>
#include <QTabWidget>
#include <QTimer>

namespace {

using Bench = MonitorBench;

} // namespace

class ParameterMonitorWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void windowHasItsForm();
    void closingWithdrawsWhatIsQueued();
    void boxesOfTheConstructionDoNotStopTheChain();
    void maximizedWindowReportsItsTitle();
    void minimizedWindowReportsNothing();
    void smallWindowScrolls();
    void onlyTheShortDirectionScrolls_data();
    void onlyTheShortDirectionScrolls();
    void largeWindowIsFilled();
};

void ParameterMonitorWindowTest::windowHasItsForm()
{
    const Bench bench;
    QCOMPARE(bench.window->windowTitle(), QStringLiteral("Monitor"));
    const QTabWidget *const tabs = bench.driver->tabs();
    QCOMPARE(tabs->minimumSize(), QSize(850, 500));
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->tabText(0), QStringLiteral("Parameter Monitor"));
    QCOMPARE(tabs->tabText(1), QStringLiteral("Fault History"));
    QVERIFY(!bench.window->widgetResizable());
}

void ParameterMonitorWindowTest::closingWithdrawsWhatIsQueued()
{
    Bench bench;
    bench.peer.held = true;
    QVERIFY(bench.waitForCycles(1));
    QVERIFY(bench.withdrawn.isEmpty());
    SignalLog<QString> withdrawn(bench.window, &Parameter_Monitor::withdrawRequests);
    delete bench.window;
    bench.window = nullptr;
    QCOMPARE(withdrawn.count(QStringLiteral("Monitor")), 1);
}

// The first box stands for longer than the first poll waits.
void ParameterMonitorWindowTest::boxesOfTheConstructionDoNotStopTheChain()
{
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("File does not exist"), [](QMessageBox *box) {
        QTimer::singleShot(150, box, [box] { box->done(QMessageBox::Ok); });
    });
    boxes.expect(QStringLiteral("File does not exit"));
    boxes.expect(QStringLiteral("File does not exist"));
    boxes.expect(QStringLiteral("File does not exist"));
    Q_CLEANUP_RESOURCE(catalogue);
    const Bench bench;
    Q_INIT_RESOURCE(catalogue);
    QVERIFY(boxes.isDone());
    QVERIFY(bench.waitForCycles(1));
}

void ParameterMonitorWindowTest::maximizedWindowReportsItsTitle()
{
    const TestDirectory directory;
    QMdiArea area;
    area.resize(1000, 700);
    area.show();
    auto *const window = new Parameter_Monitor;
    const SignalLog<QString> states(window, &Parameter_Monitor::windowStateChanged);
    QMdiSubWindow *const sub = area.addSubWindow(window);
    window->show();
    sub->showMaximized();
    QTRY_VERIFY(states.count() > 0);
    QCOMPARE(std::get<0>(states.calls.last()), QStringLiteral("Monitor"));
    sub->showNormal();
    QCOMPARE(std::get<0>(states.calls.last()), QString());
    sub->showMaximized();
    QCOMPARE(std::get<0>(states.calls.last()), QStringLiteral("Monitor"));
    sub->showMinimized();
    QCOMPARE(std::get<0>(states.calls.last()), QString());
}

// A window of its own, which keeps both states.
void ParameterMonitorWindowTest::minimizedWindowReportsNothing()
{
    const Bench bench;
    const SignalLog<QString> states(bench.window, &Parameter_Monitor::windowStateChanged);
    bench.window->setWindowState(Qt::WindowMaximized);
    QCOMPARE(std::get<0>(states.calls.last()), QStringLiteral("Monitor"));
    bench.window->setWindowState(Qt::WindowMaximized | Qt::WindowMinimized);
    QCOMPARE(std::get<0>(states.calls.last()), QString());
}

void ParameterMonitorWindowTest::smallWindowScrolls()
{
    const Bench bench;
    bench.window->resize(600, 400);
    bench.window->show();
    const QTabWidget *const tabs = bench.driver->tabs();
    QVERIFY(tabs->width() >= 850);
    QVERIFY(tabs->height() >= 500);
    QVERIFY(bench.window->horizontalScrollBar()->maximum() > 0);
    QVERIFY(bench.window->verticalScrollBar()->maximum() > 0);
}

void ParameterMonitorWindowTest::onlyTheShortDirectionScrolls_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("isLow");
    QTest::newRow("low and wide") << QSize(1800, 300) << true;
    QTest::newRow("high and narrow") << QSize(500, 1400) << false;
}

void ParameterMonitorWindowTest::onlyTheShortDirectionScrolls()
{
    QFETCH(QSize, size);
    QFETCH(bool, isLow);
    const Bench bench;
    bench.window->show();
    bench.window->resize(size);
    QTRY_COMPARE(bench.window->verticalScrollBar()->maximum() > 0, isLow);
    QCOMPARE(bench.window->horizontalScrollBar()->maximum() > 0, !isLow);
}

void ParameterMonitorWindowTest::largeWindowIsFilled()
{
    const Bench bench;
    bench.window->show();
    bench.window->resize(1600, 1000);
    QTRY_COMPARE(bench.driver->tabs()->size(), bench.window->viewport()->size());
    QCOMPARE(bench.window->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(bench.window->verticalScrollBar()->maximum(), 0);
}

QTEST_MAIN(ParameterMonitorWindowTest)

#include "tst_parameter_monitor_window.moc"
