// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parametertable.h"

#include "catalogue/parametercode.h"
#include "parameter/offlinenotice.h"
#include "parameter/parametersettinghelper.h"
#include "parameter/parametersymbols.h"
#include "widgets/drawingpace.h"
#include "widgets/fittedheader.h"
#include "widgets/steadyheader.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QStyleOptionHeader>
#include <QStylePainter>

namespace {

constexpr int pixelsPerRow = 25;
constexpr int headerHeight = 25;       // pixels
constexpr int minimumSectionSize = 20; // pixels; the style's own may exceed the default size
constexpr int defaultSectionSize = 33; // pixels
constexpr int leastDescription = 150;  // pixels
constexpr int firstFlagValue = 2;      // place of flag row 0 in a catalogue row

// Place of a cell's text in a catalogue row, for the columns behind the flags.
constexpr std::array<int, 6> valuePlaces{{13, 14, 15, 16, 13, 0}};

} // namespace

ParameterTable::ParameterTable(QWidget *parent)
    : QTableWidget(0, ColumnCount, parent)
{
    forgetRows();
    setFont(QFont(QStringLiteral("微软雅黑")));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    buildHeaders();
    buildCornerButton();
    connect(model(), &QAbstractItemModel::rowsRemoved, this, &ParameterTable::forgetRows);
    drawingTimer.setSingleShot(true);
    drawingTimer.setInterval(drawingInterval);
    connect(&drawingTimer, &QTimer::timeout, this, &ParameterTable::drawChangedCells);

    menu = new QMenu(this);
    readAction = new QAction(tr("Read Current Parameter"), this);
    writeAction = new QAction(tr("Write Current Parameter"), this);
    connect(readAction, &QAction::triggered, this, &ParameterTable::readParams);
    connect(writeAction, &QAction::triggered, this, &ParameterTable::writeParams);
    connect(this, &QTableWidget::cellDoubleClicked, this, &ParameterTable::cellDoubleClickedSlot);
    connect(this, &QTableWidget::cellClicked, this, &ParameterTable::cellClickedSlot);
}

void ParameterTable::buildHeaders()
{
    // As Qt makes its own, the vertical one first: in this order they get a new font.
    setVerticalHeader(new SteadyHeader(Qt::Vertical, this));
    setHorizontalHeader(new FittedHeader(ValueColumn, this));
    const auto symbols = parameterSymbols();
    for (int column = 0; column < parameterSymbolCount; ++column) {
        const ParameterSymbol &symbol = symbols.at(column);
        auto *head = new QTableWidgetItem(symbol.symbol);
        head->setFont(symbol.font);
        head->setForeground(symbol.colour);
        head->setTextAlignment(Qt::AlignCenter);
        head->setToolTip(symbol.legend);
        setHorizontalHeaderItem(column, head);
    }
    // Deliberate: "Uint" is so spelt.
    const QStringList heads{tr("Value"), tr("Uint"), tr("Min"), tr("Max"), tr("Default"), tr("Description")};
    for (int i = 0; i < heads.size(); ++i) {
        auto *head = new QTableWidgetItem(heads.at(i));
        head->setTextAlignment(Qt::AlignCenter);
        setHorizontalHeaderItem(ValueColumn + i, head);
    }

    QHeaderView *const horizontal = horizontalHeader();
    horizontal->setSectionsClickable(false);
    horizontal->setSectionsMovable(false);
    horizontal->setFixedHeight(headerHeight);
    horizontal->setMinimumSectionSize(minimumSectionSize);
    horizontal->setDefaultSectionSize(defaultSectionSize);
    horizontal->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontal->setSectionResizeMode(HexColumn, QHeaderView::Fixed);
    horizontal->setStretchLastSection(true);
    connect(horizontal, &QHeaderView::sectionResized, this, &ParameterTable::keepDescriptionReadable);
    verticalHeader()->setSectionsClickable(false);
    verticalHeader()->setSectionsMovable(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
}

// The last column takes what the others leave. In a narrow window that may be nothing: then it is as wide as
// its texts, and the table scrolls.
void ParameterTable::keepDescriptionReadable()
{
    if (!isVisible())
        return;
    QHeaderView *const header = horizontalHeader();
    const int left = viewport()->width() - header->sectionPosition(DescriptionColumn);
    if (header->stretchLastSection() != (left >= leastDescription))
        header->setStretchLastSection(left >= leastDescription);
}

void ParameterTable::resizeEvent(QResizeEvent *event)
{
    QTableWidget::resizeEvent(event);
    keepDescriptionReadable();
}

void ParameterTable::buildCornerButton()
{
    cornerButton = findChild<QAbstractButton *>();
    if (!cornerButton)
        return;
    cornerButton->setText(tr("Function Code"));
    cornerButton->installEventFilter(this);

    QStyleOptionHeader option;
    option.text = cornerButton->text();
    option.fontMetrics = cornerButton->fontMetrics();
    const QSize size = style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), cornerButton);
    verticalHeader()->setMinimumWidth(size.width());
}

void ParameterTable::addRow(const QStringList &values)
{
    const auto symbols = parameterSymbols();
    const int row = rowCount();
    insertRow(row);
    auto *head = new QTableWidgetItem(shortCode(values.value(1)));
    head->setTextAlignment(Qt::AlignCenter);
    setVerticalHeaderItem(row, head);
    for (int column = 0; column < parameterSymbolCount; ++column) {
        const ParameterSymbol &symbol = symbols.at(column);
        const bool isSet = values.value(firstFlagValue + symbol.flagRow) == QString::number(symbol.flagRow);
        auto *cell = new QTableWidgetItem(isSet ? symbol.symbol : QString());
        cell->setFont(symbol.font);
        cell->setForeground(symbol.colour);
        cell->setTextAlignment(Qt::AlignCenter);
        setItem(row, column, cell);
    }
    for (int column = ValueColumn; column < ColumnCount; ++column) {
        auto *cell = new QTableWidgetItem(values.value(valuePlaces.at(column - ValueColumn)));
        cell->setTextAlignment(Qt::AlignCenter);
        if (column == DescriptionColumn)
            cell->setToolTip(cell->text()); // the column takes what is left, and may cut it short
        setItem(row, column, cell);
    }
    setRowHeight(row, pixelsPerRow);
}

QString ParameterTable::code(int row) const
{
    const QTableWidgetItem *const head = verticalHeaderItem(row);
    return head ? head->text() : QString();
}

QString ParameterTable::text(int row, Column column) const
{
    const QTableWidgetItem *const cell = item(row, column);
    return cell ? cell->text() : QString();
}

QStringList ParameterTable::rowTexts(int row) const
{
    QStringList texts{code(row)};
    for (int column = 0; column < ColumnCount; ++column)
        texts.append(text(row, Column(column)));
    return texts;
}

void ParameterTable::showReply(int number, const QByteArray &bytes)
{
    for (int row = 0; row < rowCount(); ++row) {
        if (numberOf(row) != number)
            continue;
        const QString value = decodeValue(hexText(bytes), text(row, HexColumn), text(row, UnitColumn),
                                          text(row, MinColumn), text(row, MaxColumn));
        QTableWidgetItem *const cell = item(row, ValueColumn);
        cell->setText(value);
        const QString byDefault = text(row, DefaultColumn);
        if (!byDefault.isEmpty() && value != byDefault)
            cell->setForeground(Qt::blue);
    }
}

void ParameterTable::resetValueColours()
{
    for (int row = 0; row < rowCount(); ++row)
        item(row, ValueColumn)->setForeground(Qt::black);
}

void ParameterTable::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const QTableWidgetItem *const cell = itemAt(event->localPos().toPoint());
    emit cellDoubleClicked(cell ? cell->row() : -1, cell ? cell->column() : -1);
}

void ParameterTable::cellDoubleClickedSlot(int row, int col)
{
    if (col >= ColumnCount || row < 0)
        return;
    currentRow = row;
    // Deliberate: a helper that was closed stays until the table goes.
    auto *helper = new ParameterSettingHelper(rowTexts(row), rowDescriptions.value(row), this);
    connect(helper, &ParameterSettingHelper::setParamValue, this, &ParameterTable::setParamValueSlot);
    connect(helper, &ParameterSettingHelper::writeDataToServo, this, &ParameterTable::writeCurrentValue);
    helper->setModal(true);
    helper->show();
}

void ParameterTable::cellClickedSlot(int, int) {}

void ParameterTable::setParamValueSlot(QString value, bool setColor)
{
    if (currentRow < 0 || currentRow >= rowCount() || value == text(currentRow, ValueColumn))
        return;
    QTableWidgetItem *const cell = item(currentRow, ValueColumn);
    cell->setForeground(setColor ? Qt::red : Qt::black);
    cell->setText(filledUpHex(value));
    setCurrentItem(nullptr);
}

// Deliberate: the Value cell, not the Description, is compared with the word for reserved rows, so an
// ordinary reserved row offers both actions.
bool ParameterTable::offersNoWrite(int row) const
{
    return text(row, ReadOnlyColumn) == readOnlyMark() || text(row, ValueColumn) == reservedName();
}

void ParameterTable::contextMenuEvent(QContextMenuEvent *event)
{
    const QTableWidgetItem *const cell = itemAt(event->pos());
    if (!cell)
        return;
    rowCell = {cell->row(), cell->column()};
    menu->clear();
    menu->addAction(readAction);
    if (!offersNoWrite(cell->row()))
        menu->addAction(writeAction);
    menu->popup(event->globalPos());
    event->accept();
}

void ParameterTable::readParams()
{
    if (!isOnlineOrTold() || rowCell.isEmpty())
        return;
    emit readCurrentVlue(writeRecord(rowTexts(rowCell.first())));
}

void ParameterTable::writeParams()
{
    if (!isOnlineOrTold() || rowCell.isEmpty())
        return;
    const int row = rowCell.first();
    if (offersNoWrite(row))
        return;
    const QStringList record = writeRecord(rowTexts(row));
    item(row, ValueColumn)->setForeground(Qt::black);
    emit writeCurrentValue(record, false);
}

// Qt asks for the width of every column when a page is turned over, and looks at every row for it: most of
// what a page read would cost.
int ParameterTable::sizeHintForColumn(int column) const
{
    int &hint = columnHints[column];
    if (hint < 0)
        hint = QTableWidget::sizeHintForColumn(column);
    return hint;
}

void ParameterTable::forgetRows()
{
    columnHints.fill(-1, ColumnCount);
    rowNumbers.clear();
}

int ParameterTable::numberOf(int row) const
{
    if (rowNumbers.isEmpty()) {
        for (int i = 0; i < rowCount(); ++i)
            rowNumbers.append(numberInGroup(code(i)));
    }
    return rowNumbers.at(row);
}

void ParameterTable::rowsInserted(const QModelIndex &parent, int start, int end)
{
    forgetRows();
    QTableWidget::rowsInserted(parent, start, end);
}

void ParameterTable::changeEvent(QEvent *event)
{
    forgetRows();
    QTableWidget::changeEvent(event);
}

// Cells that change one after another are drawn together, 25 times a second: each drawing would hold up the
// next request of a page read.
void ParameterTable::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                                 const QVector<int> &roles)
{
    for (int column = topLeft.column(); column <= bottomRight.column(); ++column)
        columnHints[column] = -1;
    if (topLeft != bottomRight || !isVisible() || QAccessible::isActive() || !drawingTimer.isActive()) {
        QTableWidget::dataChanged(topLeft, bottomRight, roles);
        drawingTimer.start();
    } else {
        undrawnCells.append({topLeft.row(), topLeft.column()});
    }
}

void ParameterTable::drawChangedCells()
{
    if (undrawnCells.isEmpty())
        return;
    for (const auto &cell : qAsConst(undrawnCells))
        update(model()->index(cell.first, cell.second));
    undrawnCells.clear();
    drawingTimer.start();
}

bool ParameterTable::eventFilter(QObject *object, QEvent *event)
{
    if (object == cornerButton && event->type() == QEvent::Paint) {
        paintCornerButton();
        return true;
    }
    return QTableWidget::eventFilter(object, event);
}

void ParameterTable::paintCornerButton()
{
    QStyleOptionHeader option;
    option.initFrom(cornerButton);
    option.rect = cornerButton->rect();
    option.state |= QStyle::State_Raised;
    option.text = cornerButton->text();
    option.textAlignment = Qt::AlignCenter;
    option.position = QStyleOptionHeader::OnlyOneSection;
    QStylePainter painter(cornerButton);
    painter.setPen(Qt::white);
    painter.drawControl(QStyle::CE_Header, option);
}
