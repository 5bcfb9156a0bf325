// SPDX-License-Identifier: GPL-3.0-or-later
// A hold begins with a press and ends once, however it ends.
#include "support/modalanswers.h"
#include "trialrun/holdbutton.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>
#include <memory>

class HoldButtonTest;
Q_DECLARE_METATYPE(std::function<void(HoldButtonTest *)>)

class HoldButtonTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void holdEndsOnce_data();
    void holdEndsOnce();
    void keyHoldsWhileItIsDown();
    void keyThatRepeatsHoldsOn();
    void handThatComesBackDoesNotHoldAgain();
    void disabledButtonCannotBeHeld();
    void noticeInFrontEndsTheHold();

private:
    std::unique_ptr<QMdiArea> area;
    QMdiSubWindow *sub = nullptr;
    QMdiSubWindow *otherSub = nullptr;
    QWidget *form = nullptr;
    HoldButton *button = nullptr;
    QPushButton *neighbour = nullptr;
};

void HoldButtonTest::init()
{
    area = std::make_unique<QMdiArea>();
    form = new QWidget;
    auto *const layout = new QVBoxLayout(form);
    button = new HoldButton;
    neighbour = new QPushButton;
    layout->addWidget(button);
    layout->addWidget(neighbour);
    sub = area->addSubWindow(form);
    otherSub = area->addSubWindow(new QPushButton);
    area->resize(600, 400);
    area->show();
    QVERIFY(QTest::qWaitForWindowActive(area.get()));
    area->setActiveSubWindow(sub);
}

void HoldButtonTest::cleanup()
{
    area.reset();
}

void HoldButtonTest::holdEndsOnce_data()
{
    QTest::addColumn<std::function<void(HoldButtonTest *)>>("end");
    using End = std::function<void(HoldButtonTest *)>;
    QTest::newRow("mouse up") << End([](HoldButtonTest *) {});
    QTest::newRow("mouse up outside") << End(
        [](HoldButtonTest *t) { QTest::mouseRelease(t->button, Qt::LeftButton, {}, QPoint(-20, -20)); });
    QTest::newRow("mouse leaves") << End([](HoldButtonTest *t) {
        QMouseEvent move(QEvent::MouseMove, QPointF(-20, -20), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(t->button, &move);
    });
    QTest::newRow("focus lost") << End([](HoldButtonTest *t) { t->neighbour->setFocus(); });
    QTest::newRow("disabled") << End([](HoldButtonTest *t) { t->button->setEnabled(false); });
    QTest::newRow("form disabled") << End([](HoldButtonTest *t) { t->form->setEnabled(false); });
    QTest::newRow("hidden") << End([](HoldButtonTest *t) { t->form->hide(); });
    QTest::newRow("window minimised") << End([](HoldButtonTest *t) { t->sub->showMinimized(); });
    QTest::newRow("main window minimised") << End([](HoldButtonTest *t) { t->area->showMinimized(); });
    QTest::newRow("other window in front")
        << End([](HoldButtonTest *t) { t->area->setActiveSubWindow(t->otherSub); });
    QTest::newRow("window closed") << End([](HoldButtonTest *t) { t->sub->close(); });
    QTest::newRow("main window closed") << End([](HoldButtonTest *t) { t->area->close(); });
    QTest::newRow("window deactivated") << End([](HoldButtonTest *t) {
        QEvent deactivate(QEvent::WindowDeactivate);
        QApplication::sendEvent(t->area.get(), &deactivate);
    });
    QTest::newRow("from within") << End([](HoldButtonTest *t) { t->button->endHold(); });
}

void HoldButtonTest::holdEndsOnce()
{
    QFETCH(std::function<void(HoldButtonTest *)>, end);
    QSignalSpy began(button, &HoldButton::holdBegan);
    QSignalSpy ended(button, &HoldButton::holdEnded);
    QTest::mousePress(button, Qt::LeftButton);
    QCOMPARE(began.count(), 1);
    QCOMPARE(ended.count(), 0);
    end(this);
    if (QByteArray(QTest::currentDataTag()) != "mouse up")
        QCOMPARE(ended.count(), 1);
    QTest::mouseRelease(button, Qt::LeftButton);
    QCOMPARE(ended.count(), 1);
    QCOMPARE(began.count(), 1);
    QVERIFY(!button->isHeld());
}

void HoldButtonTest::keyHoldsWhileItIsDown()
{
    QSignalSpy began(button, &HoldButton::holdBegan);
    QSignalSpy ended(button, &HoldButton::holdEnded);
    button->setFocus();
    QTest::keyPress(button, Qt::Key_Space);
    QCOMPARE(began.count(), 1);
    QCOMPARE(ended.count(), 0);
    QTest::keyRelease(button, Qt::Key_Space);
    QCOMPARE(ended.count(), 1);
    QCOMPARE(began.count(), 1);
}

void HoldButtonTest::keyThatRepeatsHoldsOn()
{
    QSignalSpy began(button, &HoldButton::holdBegan);
    QSignalSpy ended(button, &HoldButton::holdEnded);
    button->setFocus();
    QTest::keyPress(button, Qt::Key_Space);
    for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
        QKeyEvent again(type, Qt::Key_Space, {}, QStringLiteral(" "), true);
        QApplication::sendEvent(button, &again);
    }
    QCOMPARE(began.count(), 1);
    QCOMPARE(ended.count(), 0);
    QTest::keyRelease(button, Qt::Key_Space);
    QCOMPARE(ended.count(), 1);
}

void HoldButtonTest::handThatComesBackDoesNotHoldAgain()
{
    QSignalSpy began(button, &HoldButton::holdBegan);
    QTest::mousePress(button, Qt::LeftButton);
    for (const QPointF &place : {QPointF(-20, -20), QPointF(5, 5)}) {
        QMouseEvent move(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(button, &move);
    }
    QCOMPARE(began.count(), 1);
    QVERIFY(!button->isHeld());
    QTest::mouseRelease(button, Qt::LeftButton);
    QTest::mousePress(button, Qt::LeftButton);
    QCOMPARE(began.count(), 2);
}

void HoldButtonTest::disabledButtonCannotBeHeld()
{
    QSignalSpy began(button, &HoldButton::holdBegan);
    button->setEnabled(false);
    QTest::mousePress(button, Qt::LeftButton);
    QCOMPARE(began.count(), 0);
}

void HoldButtonTest::noticeInFrontEndsTheHold()
{
    ModalAnswers boxes;
    QSignalSpy ended(button, &HoldButton::holdEnded);
    QTest::mousePress(button, Qt::LeftButton);
    int endedWhileOpen = 0;
    boxes.expect(QStringLiteral("lost"), [&](QMessageBox *box) {
        endedWhileOpen = ended.count();
        box->done(0);
    });
    QMessageBox box;
    box.setText(QStringLiteral("lost"));
    box.exec();
    QCOMPARE(endedWhileOpen, 1);
    QCOMPARE(ended.count(), 1);
}

QTEST_MAIN(HoldButtonTest)
#include "tst_holdbutton.moc"
