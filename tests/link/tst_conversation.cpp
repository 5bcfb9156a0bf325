// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/conversation.h"
#include "support/signallog.h"
#include "support/wire.h"

#include <QTest>

class TestConversation : public QObject
{
    Q_OBJECT

private slots:
    void sendEmitsTheFrameAndRemembersItsRegister();
    void replyIsTakenOnce();
    void silenceIsToldOnceAndEndsTheWait();
    void replyInTimeSilencesTheWatchdog();
    void droppedRequestIsNotToldLater();
    void withoutATimeOutItWaitsForEver();
};

void TestConversation::sendEmitsTheFrameAndRemembersItsRegister()
{
    Conversation conversation(1000);
    const SignalLog<QByteArray> frames(&conversation, &Conversation::frameReady);
    QCOMPARE(conversation.address(), -1);
    QVERIFY(!conversation.isOutstanding());
    conversation.send(wire::frame("01 03 E1 30 00 01"));
    QCOMPARE(frames.count(), 1);
    QCOMPARE(std::get<0>(frames.calls.first()), wire::frame("01 03 E1 30 00 01"));
    QCOMPARE(conversation.address(), 0xE130);
    QVERIFY(conversation.isOutstanding());
}

void TestConversation::replyIsTakenOnce()
{
    Conversation conversation(1000);
    QVERIFY(!conversation.takeReply());
    conversation.send(wire::frame("01 03 20 60 00 02"));
    QVERIFY(conversation.takeReply());
    QVERIFY(!conversation.takeReply());
    QCOMPARE(conversation.address(), 0x2060);
}

void TestConversation::silenceIsToldOnceAndEndsTheWait()
{
    Conversation conversation(20);
    const SignalLog<> silences(&conversation, &Conversation::timedOut);
    conversation.send(wire::frame("01 03 20 60 00 02"));
    QTRY_COMPARE(silences.count(), 1);
    QVERIFY(!conversation.isOutstanding());
    QVERIFY(!conversation.takeReply());
    // Long enough for a watchdog that starts anew by itself.
    Conversation other(60);
    const SignalLog<> otherSilences(&other, &Conversation::timedOut);
    other.send(QByteArray());
    QTRY_COMPARE(otherSilences.count(), 1);
    QCOMPARE(silences.count(), 1);
}

void TestConversation::replyInTimeSilencesTheWatchdog()
{
    Conversation conversation(30);
    Conversation later(90);
    const SignalLog<> silences(&conversation, &Conversation::timedOut);
    const SignalLog<> end(&later, &Conversation::timedOut);
    conversation.send(wire::frame("01 03 20 60 00 02"));
    later.send(QByteArray());
    QVERIFY(conversation.takeReply());
    QTRY_COMPARE(end.count(), 1);
    QCOMPARE(silences.count(), 0);
}

void TestConversation::droppedRequestIsNotToldLater()
{
    Conversation conversation(30);
    Conversation later(90);
    const SignalLog<> silences(&conversation, &Conversation::timedOut);
    const SignalLog<> end(&later, &Conversation::timedOut);
    conversation.send(wire::frame("01 03 20 60 00 02"));
    later.send(QByteArray());
    conversation.drop();
    QVERIFY(!conversation.takeReply());
    QTRY_COMPARE(end.count(), 1);
    QCOMPARE(silences.count(), 0);
}

void TestConversation::withoutATimeOutItWaitsForEver()
{
    Conversation conversation(0);
    Conversation later(40);
    const SignalLog<> silences(&conversation, &Conversation::timedOut);
    const SignalLog<> end(&later, &Conversation::timedOut);
    conversation.send(wire::frame("01 03 20 60 00 02"));
    later.send(QByteArray());
    QTRY_COMPARE(end.count(), 1);
    QCOMPARE(silences.count(), 0);
    QVERIFY(conversation.isOutstanding());
}

QTEST_GUILESS_MAIN(TestConversation)
#include "tst_conversation.moc"
