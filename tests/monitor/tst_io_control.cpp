// SPDX-License-Identifier: GPL-3.0-or-later
// The panel of sources and functions: what each box signals, and what polling shows.
#include "iocontrolbench.h"
#include "support/modalanswers.h"

#include <QTest>

namespace {

using Bench = IoControlBench;

} // namespace

class IoControlTest : public QObject
{
    Q_OBJECT

private slots:
    void rowsHoldTheFunctions_data();
    void rowsHoldTheFunctions();
    void sourcesHoldTheirItems();
    void functionIsSignalled_data();
    void functionIsSignalled();
    void polledFunctionIsShown_data();
    void polledFunctionIsShown();
    void pollingNeverWrites();
    void missingCatalogueIsTold();
};

void IoControlTest::rowsHoldTheFunctions_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QString>("half");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("last");
    QTest::newRow("inputs") << QByteArray("en_US") << "di" << 31 << "1:Enabled Servo"
                            << "30:The trigger signal of origin return";
    QTest::newRow("outputs") << QByteArray("en_US") << "do" << 14 << "1:Servo is prepared"
                             << "13:Origin return finish";
    QTest::newRow("Chinese inputs") << QByteArray("zh_CN") << "di" << 31 << "1:伺服使能" << QString();
    QTest::newRow("Chinese outputs") << QByteArray("zh_CN") << "do" << 43 << QString() << "42:32位计数器";
}

void IoControlTest::rowsHoldTheFunctions()
{
    QFETCH(QByteArray, language);
    QFETCH(QString, half);
    QFETCH(int, count);
    QFETCH(QString, second);
    QFETCH(QString, last);
    const Bench bench(language.constData());
    for (int row = 1; row <= 16; ++row) {
        const QComboBox *const combo = bench.function(half, row);
        QCOMPARE(combo->count(), count);
        QVERIFY(combo->sizeAdjustPolicy() != QComboBox::AdjustToContents);
        if (!second.isEmpty())
            QCOMPARE(combo->itemText(1), second);
        if (!last.isEmpty())
            QCOMPARE(combo->itemText(count - 1), last);
    }
    QVERIFY(!bench.function(half, 17));
}

void IoControlTest::sourcesHoldTheirItems()
{
    const Bench bench;
    QCOMPARE(bench.source("di")->itemText(0), QStringLiteral("0:External hardware terminal control"));
    QCOMPARE(bench.source("di")->itemText(1), QStringLiteral("1:Auxiliary input control"));
    QCOMPARE(bench.source("do")->itemText(0), QStringLiteral("0:Internal program control"));
    QCOMPARE(bench.source("do")->itemText(1), QStringLiteral("1:Auxiliary output control"));
}

void IoControlTest::functionIsSignalled_data()
{
    QTest::addColumn<QString>("half");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("said");
    QTest::newRow("DI5") << "di" << 5 << 12 << "DIfunction 4 12";
    QTest::newRow("DI1") << "di" << 1 << 1 << "DIfunction 0 1";
    QTest::newRow("DI16") << "di" << 16 << 30 << "DIfunction 15 30";
    QTest::newRow("DO1") << "do" << 1 << 13 << "DOfunction 0 13";
    QTest::newRow("DO16") << "do" << 16 << 9 << "DOfunction 15 9";
}

void IoControlTest::functionIsSignalled()
{
    QFETCH(QString, half);
    QFETCH(int, row);
    QFETCH(int, index);
    QFETCH(QString, said);
    Bench bench;
    bench.function(half, row)->setCurrentIndex(index);
    QCOMPARE(bench.said, QStringList(said));
    // A box without a choice has nothing to say.
    bench.function(half, row)->setCurrentIndex(-1);
    QCOMPARE(bench.said.size(), 1);
}

void IoControlTest::polledFunctionIsShown_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("half");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("index");
    const QByteArray english("en_US");
    const QByteArray chinese("zh_CN");
    QTest::newRow("DI1") << english << 0x20D3 << QByteArray("0001") << "di" << 1 << 1;
    QTest::newRow("DI5 with 12") << english << 0x20D7 << QByteArray("0012") << "di" << 5 << 12;
    QTest::newRow("DI16") << english << 0x20E2 << QByteArray("0030") << "di" << 16 << 30;
    QTest::newRow("DO1") << english << 0x20E7 << QByteArray("0009") << "do" << 1 << 9;
    QTest::newRow("DO16") << english << 0x20F6 << QByteArray("0013") << "do" << 16 << 13;
    QTest::newRow("no such function") << english << 0x20D3 << QByteArray("0031") << "di" << 1 << -1;
    QTest::newRow("a letter") << english << 0x20D3 << QByteArray("000C") << "di" << 1 << -1;
    QTest::newRow("DO 20 in English") << english << 0x20E7 << QByteArray("0020") << "do" << 1 << -1;
    QTest::newRow("DO 20 in Chinese") << chinese << 0x20E7 << QByteArray("0020") << "do" << 1 << 20;
}

void IoControlTest::polledFunctionIsShown()
{
    QFETCH(QByteArray, language);
    QFETCH(int, address);
    QFETCH(QByteArray, data);
    QFETCH(QString, half);
    QFETCH(int, row);
    QFETCH(int, index);
    Bench bench(language.constData());
    bench.poll(address, data.constData());
    QCOMPARE(bench.function(half, row)->currentIndex(), index);
    if (index < 0)
        QVERIFY(bench.function(half, row)->currentText().isEmpty());
}

void IoControlTest::pollingNeverWrites()
{
    Bench bench;
    for (const char *data : {"0001", "0012", "0099", "001F", "0000"}) {
        for (int row = 0; row < 16; ++row) {
            bench.poll(diFunctions + row, data);
            bench.poll(doFunctions + row, data);
        }
    }
    for (const int address : {0, 0x20D2, 0x20E3, 0x20E6, 0x20F7})
        bench.poll(address, "0001");
    for (const QString &said : qAsConst(bench.said))
        QVERIFY2(said.startsWith(QLatin1String("enable row")), qPrintable(said));
    QCOMPARE(bench.said.size(), 5);
}

void IoControlTest::missingCatalogueIsTold()
{
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("File does not exist"));
    Q_CLEANUP_RESOURCE(catalogue);
    const Bench bench;
    Q_INIT_RESOURCE(catalogue);
    QVERIFY(boxes.isDone());
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Open Failed"));
    bench.poll(diFunctions, "0001");
    QCOMPARE(bench.function("di", 1)->currentIndex(), -1);
}

QTEST_MAIN(IoControlTest)

#include "tst_io_control.moc"
