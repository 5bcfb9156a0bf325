// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulatortest.h"

#include "simulator/linedisturber.h"

#include <QtTest>

using namespace kt500sim;

namespace {

const char reply[] = "01030207d0bbe8";

/// Applies the disturber to the reply above; each piece as its text, "+" and its delay in milliseconds.
QByteArrayList disturbed(LineDisturber *disturber)
{
    QByteArrayList pieces;
    for (const ReplyPiece &piece : disturber->apply(bytesOf(reply)).pieces)
        pieces << hexOf(piece.bytes) + '+' + QByteArray::number(qlonglong(piece.delay / milliseconds(1)));
    return pieces;
}

} // namespace

class TestFaults : public QObject
{
    Q_OBJECT

private slots:
    void textFormNamesTheFault_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("milliseconds");
        QTest::addColumn<int>("code");
        QTest::addColumn<bool>("on");
        const auto row = [](const char *text, FaultKind kind, int count, int time, int code, bool on) {
            QTest::newRow(text) << QString::fromLatin1(text) << int(kind) << count << time << code << on;
        };
        row("noreply 3", FaultKind::NoReply, 3, 0, 0, false);
        row("badcrc 2", FaultKind::BadChecksum, 2, 0, 0, false);
        row("split 1 20", FaultKind::SplitReply, 1, 20, 0, false);
        row("splinter 2 5", FaultKind::Splinter, 2, 5, 0, false);
        row("late 1 80", FaultKind::LateReply, 1, 80, 0, false);
        row("stale 1", FaultKind::StaleBytes, 1, 0, 0, false);
        row("exception 4 1", FaultKind::Exception, 1, 0, 4, false);
        row("silence 1500", FaultKind::Silence, 0, 1500, 0, false);
        row("hangup 2000", FaultKind::HangUp, 0, 2000, 0, false);
        row("garbage on", FaultKind::Garbage, 0, 0, 0, true);
        row("garbage off", FaultKind::Garbage, 0, 0, 0, false);
        row("stream on", FaultKind::UnaskedStream, 0, 0, 0, true);
        row("stream off", FaultKind::UnaskedStream, 0, 0, 0, false);
        row("clear", FaultKind::Clear, 0, 0, 0, false);
    }
    void textFormNamesTheFault()
    {
        QFETCH(QString, text);
        QString error;
        const std::optional<Fault> fault = Fault::fromText(QStringLiteral("  %1 ").arg(text), &error);
        QVERIFY2(fault, qPrintable(error));
        QTEST(int(fault->kind), "kind");
        QTEST(fault->count, "count");
        QTEST(fault->milliseconds, "milliseconds");
        QTEST(fault->code, "code");
        QTEST(fault->on, "on");
        QCOMPARE(fault->toText(), text);
        QVERIFY(Fault::isFaultWord(text.section(QLatin1Char(' '), 0, 0)));
    }

    void badTextIsRefusedWithAReason_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("reason");
        QTest::newRow("unknown") << "explode 1"
                                 << "there is no fault \"explode\"";
        QTest::newRow("empty") << ""
                               << "there is no fault \"\"";
        QTest::newRow("number missing") << "noreply"
                                        << "usage: noreply N";
        QTest::newRow("one number of two") << "split 1"
                                           << "usage: split N MS";
        QTest::newRow("too many") << "silence 5 5"
                                  << "usage: silence MS";
        QTest::newRow("no number") << "late x 5"
                                   << "usage: late N MS";
        QTest::newRow("negative") << "noreply -1"
                                  << "usage: noreply N";
        QTest::newRow("code zero") << "exception 0 1"
                                   << "usage: exception CODE N";
        QTest::newRow("code too large") << "exception 256 1"
                                        << "usage: exception CODE N";
        QTest::newRow("no switch") << "garbage 1"
                                   << "usage: garbage on|off";
    }
    void badTextIsRefusedWithAReason()
    {
        QFETCH(QString, text);
        QFETCH(QString, reason);
        QString error;
        QVERIFY(!Fault::fromText(text, &error));
        QVERIFY2(error.startsWith(reason), qPrintable(error));
    }

    void replyIsDisturbedAsAsked_data()
    {
        QTest::addColumn<QString>("faults");
        QTest::addColumn<QByteArrayList>("pieces");
        QTest::newRow("none") << "" << QByteArrayList{"01030207d0bbe8+0"};
        QTest::newRow("lost") << "noreply 1" << QByteArrayList{};
        QTest::newRow("bad checksum") << "badcrc 1" << QByteArrayList{"01030207d0bb17+0"};
        QTest::newRow("split") << "split 1 20" << QByteArrayList{"010302+0", "07d0bbe8+20"};
        QTest::newRow("splintered") << "splinter 1 20" << QByteArrayList{"0103+0", "0207+20", "d0bbe8+40"};
        QTest::newRow("late") << "late 1 80" << QByteArrayList{"01030207d0bbe8+80"};
        QTest::newRow("stale, nothing older") << "stale 1" << QByteArrayList{"000001030207d0bbe8+0"};
        QTest::newRow("late and split")
            << "late 1 80;split 1 20" << QByteArrayList{"010302+80", "07d0bbe8+100"};
        QTest::newRow("count of zero") << "badcrc 0" << QByteArrayList{"01030207d0bbe8+0"};
        QTest::newRow("taken back") << "badcrc 5;badcrc 0" << QByteArrayList{"01030207d0bbe8+0"};
    }
    void replyIsDisturbedAsAsked()
    {
        QFETCH(QString, faults);
        QFETCH(QByteArrayList, pieces);
        LineDisturber disturber;
        for (const QString &text : faults.split(QLatin1Char(';'), Qt::SkipEmptyParts))
            disturber.set(*Fault::fromText(text));
        QCOMPARE(disturbed(&disturber), pieces);
        QCOMPARE(disturbed(&disturber), QByteArrayList{"01030207d0bbe8+0"});
    }

    void faultIsUsedUpByItsCount()
    {
        LineDisturber disturber;
        disturber.set(Fault::noReply(2));
        disturber.set(Fault::badChecksum(1));
        QCOMPARE(disturbed(&disturber), QByteArrayList());
        QCOMPARE(disturbed(&disturber), QByteArrayList());
        QCOMPARE(disturbed(&disturber), QByteArrayList{"01030207d0bb17+0"});
        QCOMPARE(disturbed(&disturber), QByteArrayList{"01030207d0bbe8+0"});
    }

    void staleBytesAreTheTailOfTheReplyBefore()
    {
        LineDisturber disturber;
        disturber.apply(bytesOf("0103044b540500af57"));
        disturber.set(Fault::staleBytes(1));
        QCOMPARE(disturbed(&disturber), QByteArrayList{"0500af5701030207d0bbe8+0"});
    }

    void exceptionCodeIsTakenOncePerRequest()
    {
        LineDisturber disturber;
        disturber.set(Fault::exception(6, 2));
        QCOMPARE(disturber.takeExceptionCode(), 6);
        QCOMPARE(disturber.takeExceptionCode(), 6);
        QCOMPARE(disturber.takeExceptionCode(), 0);
    }

    void clearForgetsEveryFault()
    {
        LineDisturber disturber;
        disturber.set(Fault::noReply(5));
        disturber.set(Fault::splitReply(5, 10));
        disturber.set(Fault::exception(4, 5));
        disturber.clear();
        QCOMPARE(disturbed(&disturber), QByteArrayList{"01030207d0bbe8+0"});
        QCOMPARE(disturber.takeExceptionCode(), 0);
    }
};

QTEST_APPLESS_MAIN(TestFaults)
#include "tst_simulator_faults.moc"
