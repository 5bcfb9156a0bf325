// SPDX-License-Identifier: GPL-3.0-or-later
// What the user asks for between two polls: the frames, and the order in which they leave.
#include "pollerbench.h"

#include <QElapsedTimer>

#include <algorithm>
#include <array>

namespace {

const QString firstPoll = QStringLiteral("010325DC0007");
const QString secondPoll = QStringLiteral("010325E3000A");

// One request of each kind, in the order of service, and its frame without the CRC.
struct Request
{
    MonitorWrite kind;
    int number;
    int value;
    const char *frame;
};
constexpr std::array<Request, 10> requests{{
    {MonitorWrite::DISource, 0, 1, "0106E0C8FFFF"},
    {MonitorWrite::DOSource, 0, 0, "0106E0C90000"},
    {MonitorWrite::DIFunction, 4, 12, "0106E0D70012"},
    {MonitorWrite::DOFunction, 15, 9, "0106E0F60009"},
    {MonitorWrite::DILevel, 0, 0x8001, "010620CA8001"},
    {MonitorWrite::DOLevel, 0, 0x8000, "010620CB8000"},
    {MonitorWrite::Method, 0, 1, "0106E0640001"},
    {MonitorWrite::Pn300, 0, 4121, "0106E12C4121"},
    {MonitorWrite::LineEdit, 3, 1005, "0110E191000204000003ED"},
    {MonitorWrite::OtherCombo, 1, 2, "0106E1F40002"},
}};

} // namespace

class MonitorPollerWritesTest : public QObject
{
    Q_OBJECT

private slots:
    void requestHasItsFrame_data();
    void requestHasItsFrame();
    void requestOutOfRangeSendsNothing_data();
    void requestOutOfRangeSendsNothing();
    void requestLeavesAfterTheNextReply();
    void writeCutsTheCycleShort();
    void echoOfAWriteIsNotDecoded();
    void refusedWriteEndsTheCycleToo();
    void writeInThePauseWaitsForTheFirstReply();
    void newerRequestOfAKindReplacesTheOlder_data();
    void newerRequestOfAKindReplacesTheOlder();
    void twoRequestsBetweenTwoReplies_data();
    void twoRequestsBetweenTwoReplies();
    void threeRequestsBetweenTwoReplies_data();
    void threeRequestsBetweenTwoReplies();
    void everyKindAtOnceLeavesInTheOrderOfService();

private:
    static void addOrders(int length);
    static void checkOrder();
};

void MonitorPollerWritesTest::requestHasItsFrame_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("frame");
    const auto row = [](const char *name, MonitorWrite kind, int number, int value, const char *frame) {
        QTest::newRow(name) << int(kind) << number << value << QString::fromLatin1(frame);
    };
    row("DI source auxiliary", MonitorWrite::DISource, 0, 1, "0106E0C8FFFF");
    row("DI source terminals", MonitorWrite::DISource, 0, 0, "0106E0C80000");
    row("DI source of another index", MonitorWrite::DISource, 0, 2, "0106E0C80000");
    row("DO source auxiliary", MonitorWrite::DOSource, 0, 1, "0106E0C9FFFF");
    row("DO source internal", MonitorWrite::DOSource, 0, 0, "0106E0C90000");
    row("DI1 without function", MonitorWrite::DIFunction, 0, 0, "0106E0D30000");
    row("DI5, function 12 in decimal digits", MonitorWrite::DIFunction, 4, 12, "0106E0D70012");
    row("DI16, function 30", MonitorWrite::DIFunction, 15, 30, "0106E0E20030");
    row("DO1, function 1", MonitorWrite::DOFunction, 0, 1, "0106E0E70001");
    row("DO16, function 42", MonitorWrite::DOFunction, 15, 42, "0106E0F60042");
    row("DI levels", MonitorWrite::DILevel, 0, 0x1F, "010620CA001F");
    row("DO level of row 16", MonitorWrite::DOLevel, 0, 0x8000, "010620CB8000");
    row("speed mode", MonitorWrite::Method, 0, 1, "0106E0640001");
    row("Pn-300 in decimal digits", MonitorWrite::Pn300, 0, 4121, "0106E12C4121");
    row("Pn-300 padded", MonitorWrite::Pn300, 0, 10, "0106E12C0010");
    row("position value", MonitorWrite::LineEdit, 0, 10000, "0110E13A00020400002710");
    row("position value below zero", MonitorWrite::LineEdit, 0, -10000, "0110E13A000204FFFFD8F0");
    row("gear numerator", MonitorWrite::LineEdit, 1, 131072, "0110E13000020400020000");
    row("gear numerator below zero", MonitorWrite::LineEdit, 1, -1, "0110E130000204FFFFFFFF");
    row("gear denominator", MonitorWrite::LineEdit, 2, 10000, "0110E13800020400002710");
    row("speed 100.5", MonitorWrite::LineEdit, 3, 1005, "0110E191000204000003ED");
    row("speed -100.0", MonitorWrite::LineEdit, 3, -1000, "0110E191000204FFFFFC18");
    row("acceleration", MonitorWrite::LineEdit, 4, 100, "0106E1930064");
    row("deceleration", MonitorWrite::LineEdit, 5, 4660, "0106E1941234");
    row("maximum speed", MonitorWrite::LineEdit, 6, 50000, "0106E19BC350");
    row("maximum speed with a fifth digit", MonitorWrite::LineEdit, 6, 70000, "0106E19B1170");
    row("torque", MonitorWrite::LineEdit, 7, 50, "0106E1F50032");
    row("torque below zero", MonitorWrite::LineEdit, 7, -50, "0106E1F5FFCE");
    row("forward limit", MonitorWrite::LineEdit, 8, 30000, "0106E1FF7530");
    row("reverse limit", MonitorWrite::LineEdit, 9, 30000, "0106E2007530");
    row("speed source", MonitorWrite::OtherCombo, 0, 1, "0106E1900001");
    row("torque source", MonitorWrite::OtherCombo, 1, 2, "0106E1F40002");
    row("speed limit source", MonitorWrite::OtherCombo, 2, 2, "0106E1FD0002");
}

void MonitorPollerWritesTest::requestHasItsFrame()
{
    QFETCH(int, kind);
    QFETCH(int, number);
    QFETCH(int, value);
    QFETCH(QString, frame);
    PollerBench bench;
    bench.poller.requestWrite(static_cast<MonitorWrite>(kind), number, value);
    bench.answer();
    QCOMPARE(bench.frames.last(), wire::frame(frame.toLatin1().constData()));
}

void MonitorPollerWritesTest::requestOutOfRangeSendsNothing_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("number");
    for (const int number : {-1, 16}) {
        QTest::addRow("DI row %d", number) << int(MonitorWrite::DIFunction) << number;
        QTest::addRow("DO row %d", number) << int(MonitorWrite::DOFunction) << number;
    }
    for (const int number : {-1, 10})
        QTest::addRow("line edit %d", number) << int(MonitorWrite::LineEdit) << number;
    for (const int number : {-1, 3})
        QTest::addRow("combo box %d", number) << int(MonitorWrite::OtherCombo) << number;
}

void MonitorPollerWritesTest::requestOutOfRangeSendsNothing()
{
    QFETCH(int, kind);
    QFETCH(int, number);
    PollerBench bench;
    bench.poller.requestWrite(static_cast<MonitorWrite>(kind), number, 1);
    bench.answer();
    QCOMPARE(bench.last(), secondPoll);
}

void MonitorPollerWritesTest::requestLeavesAfterTheNextReply()
{
    PollerBench bench;
    bench.poller.requestWrite(MonitorWrite::Method, 0, 1);
    QCOMPARE(bench.frames.size(), 1);
    bench.answer();
    QCOMPARE(bench.frames.size(), 2);
    QCOMPARE(bench.last(), QStringLiteral("0106E0640001"));
}

void MonitorPollerWritesTest::writeCutsTheCycleShort()
{
    PollerBench bench;
    bench.answer();
    bench.poller.requestWrite(MonitorWrite::Method, 0, 1);
    bench.answer();
    QElapsedTimer clock;
    clock.start();
    bench.answer();
    QCOMPARE(bench.frames.size(), 3);
    QVERIFY(bench.waitForFrames(4));
    QVERIFY(clock.elapsed() >= 190);
    QCOMPARE(bench.last(), firstPoll);
    bench.answer();
    QCOMPARE(bench.last(), secondPoll);
}

void MonitorPollerWritesTest::echoOfAWriteIsNotDecoded()
{
    PollerBench bench;
    bench.poller.requestWrite(MonitorWrite::Method, 0, 1);
    bench.answer();
    bench.items.clear();
    // As long as a good reply to a poll, too.
    bench.answerWith("0001 0002 0003 0004 0005 0006 0007");
    QVERIFY(bench.items.isEmpty());
    QCOMPARE(bench.frames.size(), 2);
}

void MonitorPollerWritesTest::refusedWriteEndsTheCycleToo()
{
    PollerBench bench;
    bench.poller.requestWrite(MonitorWrite::Method, 0, 1);
    bench.answer();
    bench.poller.takeReply(wire::frame("018604"));
    QCOMPARE(bench.frames.size(), 2);
    QVERIFY(bench.waitForFrames(3));
    QCOMPARE(bench.last(), firstPoll);
}

void MonitorPollerWritesTest::writeInThePauseWaitsForTheFirstReply()
{
    PollerBench bench;
    bench.finishCycle();
    bench.frames.clear();
    bench.poller.requestWrite(MonitorWrite::DISource, 0, 1);
    QVERIFY(bench.waitForFrames(1));
    QCOMPARE(bench.last(), firstPoll);
    bench.answer();
    QCOMPARE(bench.last(), QStringLiteral("0106E0C8FFFF"));
    bench.answer();
    QVERIFY(bench.waitForFrames(3));
    QCOMPARE(bench.texts(), QStringList({firstPoll, "0106E0C8FFFF", firstPoll}));
}

void MonitorPollerWritesTest::newerRequestOfAKindReplacesTheOlder_data()
{
    QTest::addColumn<int>("kind");
    for (const Request &request : requests)
        QTest::newRow(request.frame) << int(request.kind);
}

void MonitorPollerWritesTest::newerRequestOfAKindReplacesTheOlder()
{
    QFETCH(int, kind);
    const Request &request = requests.at(std::size_t(kind));
    PollerBench bench;
    bench.poller.requestWrite(request.kind, request.number > 0 ? request.number - 1 : 0, 0);
    bench.poller.requestWrite(request.kind, request.number, request.value);
    bench.answer();
    QCOMPARE(bench.last(), QString::fromLatin1(request.frame));
    bench.answer();
    QVERIFY(bench.waitForFrames(3));
    bench.answer();
    QCOMPARE(bench.last(), secondPoll);
}

// Every choice of that many kinds, raised in every order.
void MonitorPollerWritesTest::addOrders(int length)
{
    QTest::addColumn<QList<int>>("raised");
    int codes = 1;
    for (int i = 0; i < length; ++i)
        codes *= int(requests.size());
    for (int code = 0; code < codes; ++code) {
        QList<int> raised;
        int rest = code;
        for (int i = 0; i < length; ++i, rest /= int(requests.size())) {
            const int kind = rest % int(requests.size());
            if (!raised.contains(kind))
                raised.append(kind);
        }
        if (raised.size() == length)
            QTest::addRow("order %d", code) << raised;
    }
}

void MonitorPollerWritesTest::checkOrder()
{
    QFETCH(QList<int>, raised);
    PollerBench bench;
    for (const int kind : raised) {
        const Request &request = requests.at(std::size_t(kind));
        bench.poller.requestWrite(request.kind, request.number, request.value);
    }
    QList<int> served = raised;
    std::sort(served.begin(), served.end());
    QStringList wanted;
    for (const int kind : served)
        wanted << firstPoll << QString::fromLatin1(requests.at(std::size_t(kind)).frame);
    wanted << firstPoll << secondPoll;
    for (int i = 0; i < raised.size(); ++i) {
        bench.answer();
        bench.answer();
        // What the timer does at the end of the pause.
        bench.poller.HandleUpDataTimer();
    }
    bench.answer();
    QCOMPARE(bench.texts(), wanted);
}

void MonitorPollerWritesTest::twoRequestsBetweenTwoReplies_data()
{
    addOrders(2);
}

void MonitorPollerWritesTest::twoRequestsBetweenTwoReplies()
{
    checkOrder();
}

void MonitorPollerWritesTest::threeRequestsBetweenTwoReplies_data()
{
    addOrders(3);
}

void MonitorPollerWritesTest::threeRequestsBetweenTwoReplies()
{
    checkOrder();
}

void MonitorPollerWritesTest::everyKindAtOnceLeavesInTheOrderOfService()
{
    PollerBench bench;
    for (auto request = requests.rbegin(); request != requests.rend(); ++request)
        bench.poller.requestWrite(request->kind, request->number, request->value);
    QStringList wanted;
    for (const Request &request : requests) {
        wanted << firstPoll << QString::fromLatin1(request.frame);
        bench.answer();
        bench.answer();
        bench.poller.HandleUpDataTimer();
    }
    QCOMPARE(bench.texts(), wanted << firstPoll);
}

QTEST_GUILESS_MAIN(MonitorPollerWritesTest)

#include "tst_monitorpoller_writes.moc"
