// SPDX-License-Identifier: GPL-3.0-or-later
// A table with steady headers beside a table with Qt's own, both of one model.
#include "widgets/steadyheader.h"

#include <QStackedWidget>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

#include <memory>
#include <vector>

namespace {

constexpr int rows = 30;
constexpr int columns = 4;

// Counts how often the text of a head is asked for.
class CountingModel : public QStandardItemModel
{
public:
    CountingModel()
        : QStandardItemModel(rows, columns)
    {
        for (int row = 0; row < rows; ++row)
            setVerticalHeaderItem(row, new QStandardItem(QStringLiteral("Head %1").arg(row)));
        setHorizontalHeaderItem(3, new QStandardItem(QStringLiteral("a wide head")));
        setVerticalHeaderItem(29, new QStandardItem(QStringLiteral("a wide head")));
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        asked += role == Qt::DisplayRole;
        return QStandardItemModel::headerData(section, orientation, role);
    }

    mutable int asked = 0;
};

// Two stacks of a table and an empty page, shown.
struct Pair
{
    explicit Pair(QAbstractItemModel *model)
    {
        for (const auto orientation : {Qt::Horizontal, Qt::Vertical})
            setHeader(steady, new SteadyHeader(orientation, &steady));
        for (QTableView *view : {&steady, &plain}) {
            view->setModel(model);
            for (QHeaderView *header : {view->horizontalHeader(), view->verticalHeader()}) {
                header->setSectionResizeMode(QHeaderView::ResizeToContents);
                header->setSectionsClickable(false);
            }
            auto *stack = new QStackedWidget;
            stack->addWidget(view);
            stack->addWidget(new QWidget);
            stack->resize(500, 300);
            stacks.emplace_back(stack);
            stack->show();
        }
        settle();
    }
    Q_DISABLE_COPY_MOVE(Pair)

    static void setHeader(QTableView &view, QHeaderView *header)
    {
        if (header->orientation() == Qt::Horizontal)
            view.setHorizontalHeader(header);
        else
            view.setVerticalHeader(header);
    }
    static void settle()
    {
        QCoreApplication::processEvents(); // a change of a text is laid out by a timer of no time
        QCoreApplication::processEvents();
    }
    void show(int page)
    {
        for (const auto &stack : stacks)
            stack->setCurrentIndex(page);
        settle();
    }
    // Of the headers and each of their sections, in pixels.
    static QList<int> sizesOf(const QTableView &view)
    {
        QList<int> sizes;
        for (const QHeaderView *header : {view.horizontalHeader(), view.verticalHeader()}) {
            sizes << header->width() << header->height();
            for (int section = 0; section < header->count(); ++section)
                sizes.append(header->sectionSize(section));
        }
        return sizes;
    }

    std::vector<std::unique_ptr<QStackedWidget>> stacks;
    QTableView steady;
    QTableView plain;
};

using Change = void (*)(Pair &, QStandardItemModel &);

const QString wideText = QStringLiteral("a much wider head than before");

void widenHeads(QStandardItemModel &model)
{
    model.setHeaderData(1, Qt::Horizontal, wideText);
    model.setHeaderData(2, Qt::Vertical, wideText);
}

void setWideHeads(Pair &, QStandardItemModel &model)
{
    widenHeads(model);
}

void setLargeHeadFont(Pair &, QStandardItemModel &model)
{
    QFont font;
    font.setPointSize(25);
    model.setHeaderData(1, Qt::Horizontal, font, Qt::FontRole);
    model.setHeaderData(2, Qt::Vertical, font, Qt::FontRole);
}

void setLargeFont(Pair &pair, QStandardItemModel &)
{
    QFont font;
    font.setPointSize(21);
    for (QTableView *view : {&pair.steady, &pair.plain}) {
        view->horizontalHeader()->setFont(font);
        view->verticalHeader()->setFont(font);
    }
}

void setStyleSheet(Pair &pair, QStandardItemModel &)
{
    for (QTableView *view : {&pair.steady, &pair.plain})
        view->setStyleSheet(QStringLiteral("QHeaderView::section { padding: 9px; }"));
}

void insertInFront(Pair &, QStandardItemModel &model)
{
    model.insertColumn(0);
    model.insertRow(0);
}

void removeTheWidest(Pair &, QStandardItemModel &model)
{
    model.removeColumn(3);
    model.removeRow(29);
}

} // namespace

Q_DECLARE_METATYPE(Change)

class SteadyHeaderTest : public QObject
{
    Q_OBJECT

private slots:
    void changedHeadsAreMeasuredAnew_data();
    void changedHeadsAreMeasuredAnew();
    void changesOfAHiddenTableAreSeenWhenItIsShown_data();
    void changesOfAHiddenTableAreSeenWhenItIsShown();
    void hiddenTableIsLaidOutForItsNewSize();
    void otherModelIsMeasured();
    void unchangedHeadsAreNotAskedForAgain();
};

void SteadyHeaderTest::changedHeadsAreMeasuredAnew_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("text of a head") << Change(setWideHeads);
    QTest::newRow("font of a head") << Change(setLargeHeadFont);
    QTest::newRow("font of the headers") << Change(setLargeFont);
    QTest::newRow("style sheet") << Change(setStyleSheet);
    QTest::newRow("insertion in front") << Change(insertInFront);
    QTest::newRow("removal") << Change(removeTheWidest);
}

void SteadyHeaderTest::changedHeadsAreMeasuredAnew()
{
    QFETCH(Change, change);
    CountingModel model;
    Pair pair(&model);
    QCOMPARE(Pair::sizesOf(pair.steady), Pair::sizesOf(pair.plain));
    const QList<int> before = Pair::sizesOf(pair.steady);
    change(pair, model);
    Pair::settle();
    QVERIFY(Pair::sizesOf(pair.steady) != before);
    QCOMPARE(Pair::sizesOf(pair.steady), Pair::sizesOf(pair.plain));
}

void SteadyHeaderTest::changesOfAHiddenTableAreSeenWhenItIsShown_data()
{
    changedHeadsAreMeasuredAnew_data();
}

void SteadyHeaderTest::changesOfAHiddenTableAreSeenWhenItIsShown()
{
    QFETCH(Change, change);
    CountingModel model;
    Pair pair(&model);
    pair.show(1);
    change(pair, model);
    Pair::settle();
    pair.show(0);
    QCOMPARE(Pair::sizesOf(pair.steady), Pair::sizesOf(pair.plain));
}

void SteadyHeaderTest::hiddenTableIsLaidOutForItsNewSize()
{
    CountingModel model;
    Pair pair(&model);
    for (QTableView *view : {&pair.steady, &pair.plain})
        view->horizontalHeader()->setStretchLastSection(true);
    pair.show(1);
    for (const auto &stack : pair.stacks)
        stack->resize(700, 200);
    pair.show(0);
    QCOMPARE(pair.steady.width(), 700);
    QCOMPARE(Pair::sizesOf(pair.steady), Pair::sizesOf(pair.plain));
}

void SteadyHeaderTest::otherModelIsMeasured()
{
    CountingModel model;
    CountingModel other;
    widenHeads(other);
    Pair pair(&model);
    for (QTableView *view : {&pair.steady, &pair.plain})
        view->setModel(&other);
    Pair::settle();
    QCOMPARE(Pair::sizesOf(pair.steady), Pair::sizesOf(pair.plain));
    setLargeHeadFont(pair, other);
    Pair::settle();
    QCOMPARE(Pair::sizesOf(pair.steady), Pair::sizesOf(pair.plain));
}

void SteadyHeaderTest::unchangedHeadsAreNotAskedForAgain()
{
    CountingModel model;
    Pair pair(&model);
    pair.plain.setModel(nullptr);
    for (const auto &stack : pair.stacks)
        stack->setUpdatesEnabled(false); // a drawing asks for each head
    pair.show(1);
    model.asked = 0;
    pair.show(0);
    pair.show(1);
    QCOMPARE(model.asked, 0);
}

QTEST_MAIN(SteadyHeaderTest)
#include "tst_steadyheader.moc"
