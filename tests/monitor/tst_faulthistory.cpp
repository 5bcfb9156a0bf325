// SPDX-License-Identifier: GPL-3.0-or-later
// The fault record: its labels, what a read of it shows, and what is left of an older read.
#include "alarmpanels.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QTest>

namespace {

using Panels = AlarmPanels;
using alarmtext::overload;

QByteArray recordOf(const QList<int> &numbers)
{
    QByteArray data;
    for (int i = 0; i < 10; ++i)
        data.append(char(numbers.value(i) >> 8)).append(char(numbers.value(i)));
    return wire::readReply(data);
}

} // namespace

class FaultHistoryTest : public QObject
{
    Q_OBJECT

private slots:
    void recordStartsWithItsLabels();
    void tenKnownFaultsFillAllEntries();
    void emptyRegistersTakeNoEntry();
    void emptyRecordLeavesTheTable();
    void secondReadRefillsFromTheTop();
    void unknownFaultsAreSkipped();
    void shorterReplyYieldsFewerCodes_data();
    void shorterReplyYieldsFewerCodes();
    void moreThanTenAreNotShown();
    void recordInChinese();
    void recordWithoutACatalogueStaysEmpty();
};

void FaultHistoryTest::recordStartsWithItsLabels()
{
    const Panels panels;
    const QTableWidget *const table = panels.record();
    QCOMPARE(table->rowCount(), 20);
    QStringList heads;
    for (int column = 0; column < table->columnCount(); ++column)
        heads << table->horizontalHeaderItem(column)->text();
    QCOMPARE(heads, QStringList({"Historical Fault", "Code", "Name", "Cauese", "Corrective"}));
    QCOMPARE(panels.history->findChild<QGroupBox *>()->title(), QStringLiteral("Historical Fault"));
    for (int entry = 0; entry < 10; ++entry) {
        QCOMPARE(table->item(2 * entry, 0)->text(), entry == 0
                                                        ? QStringLiteral("Last Fault")
                                                        : QStringLiteral("Historical Fault %1").arg(entry));
        for (int column = 0; column < 5; ++column) {
            QCOMPARE(table->rowSpan(2 * entry, column), 2);
            QCOMPARE(table->item(2 * entry, column)->textAlignment(), int(Qt::AlignCenter));
            QVERIFY(column == 0 || table->item(2 * entry, column)->text().isEmpty());
        }
    }
    const QHeaderView *const header = table->horizontalHeader();
    QCOMPARE(header->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QCOMPARE(header->sectionResizeMode(1), QHeaderView::Fixed);
    for (const int column : {2, 3, 4})
        QCOMPARE(header->sectionResizeMode(column), QHeaderView::Stretch);
    QCOMPARE(table->verticalHeader()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QVERIFY(table->verticalHeader()->isHidden());
}

void FaultHistoryTest::tenKnownFaultsFillAllEntries()
{
    const Panels panels;
    panels.history->handleFaultHistorySlot(recordOf({1, 3, 4, 5, 6, 8, 9, 10, 45, 70}));
    QCOMPARE(panels.codes(), QStringList({"Er-001", "Er-003", "Er-004", "Er-005", "Er-006", "Er-008",
                                          "Er-009", "Er-010", "Er-045", "Er-070"}));
    QStringList second;
    for (int column = 1; column < 5; ++column)
        second << panels.record()->item(2, column)->text();
    QCOMPARE(second, overload);
}

void FaultHistoryTest::emptyRegistersTakeNoEntry()
{
    const Panels panels;
    panels.history->handleFaultHistorySlot(recordOf({1, 0, 3}));
    QCOMPARE(panels.codes().mid(0, 3), QStringList({"Er-001", "Er-003", ""}));
}

void FaultHistoryTest::emptyRecordLeavesTheTable()
{
    const Panels panels;
    panels.history->handleFaultHistorySlot(recordOf({1, 3}));
    panels.history->handleFaultHistorySlot(recordOf({}));
    QCOMPARE(panels.codes().mid(0, 3), QStringList({"Er-001", "Er-003", ""}));
}

void FaultHistoryTest::secondReadRefillsFromTheTop()
{
    const Panels panels;
    panels.history->handleFaultHistorySlot(recordOf({1, 3, 4}));
    panels.history->handleFaultHistorySlot(recordOf({8}));
    QCOMPARE(panels.codes().mid(0, 4), QStringList({"Er-008", "Er-003", "Er-004", ""}));
}

void FaultHistoryTest::unknownFaultsAreSkipped()
{
    const Panels panels;
    panels.history->handleFaultHistorySlot(recordOf({41, 1, 100, 3, 255}));
    QCOMPARE(panels.codes().mid(0, 3), QStringList({"Er-001", "Er-003", ""}));
}

void FaultHistoryTest::shorterReplyYieldsFewerCodes_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QStringList>("codes");
    QTest::newRow("two registers") << wire::readReply(wire::bytes("0001 0003"))
                                   << QStringList{"Er-001", "Er-003", ""};
    QTest::newRow("an odd byte") << wire::readReply(wire::bytes("0001 00")) << QStringList{"Er-001", "", ""};
    QTest::newRow("nothing") << QByteArray() << QStringList{"", "", ""};
    QTest::newRow("exception") << wire::frame("018302") << QStringList{"", "", ""};
}

void FaultHistoryTest::shorterReplyYieldsFewerCodes()
{
    QFETCH(QByteArray, reply);
    QFETCH(QStringList, codes);
    const Panels panels;
    panels.history->handleFaultHistorySlot(reply);
    QCOMPARE(panels.codes().mid(0, 3), codes);
}

void FaultHistoryTest::moreThanTenAreNotShown()
{
    const Panels panels;
    QByteArray data;
    for (int i = 0; i < 12; ++i)
        data.append('\0').append(i < 10 ? '\x01' : '\x03');
    panels.history->handleFaultHistorySlot(wire::readReply(data));
    QCOMPARE(panels.codes().count(QStringLiteral("Er-001")), 10);
    QCOMPARE(panels.record()->rowCount(), 20);
}

void FaultHistoryTest::recordInChinese()
{
    const Panels panels("zh_CN");
    panels.history->handleFaultHistorySlot(recordOf({19, 3}));
    QCOMPARE(panels.codes().mid(0, 2), QStringList({"Er-003", ""}));
    QVERIFY(panels.record()->item(0, FaultHistory::NameColumn)->text().at(0).unicode() > 0x4E00);
}

void FaultHistoryTest::recordWithoutACatalogueStaysEmpty()
{
    FaultHistory history;
    history.handleFaultHistorySlot(recordOf({1, 3}));
    QVERIFY(history.findChild<QTableWidget *>()->item(0, FaultHistory::CodeColumn)->text().isEmpty());
}

QTEST_MAIN(FaultHistoryTest)

#include "tst_faulthistory.moc"
