// SPDX-License-Identifier: GPL-3.0-or-later
// One group of parameters, a row each. The text of a Value cell is the value of record: what a page write
// sends, a file saves and a printout shows. Main thread; owned by ParameterEditor.
#pragma once

#include "parameter/parameterrow.h"

#include <QList>
#include <QStringList>
#include <QTableWidget>
#include <QTimer>
#include <QVector>

class QAbstractButton;
class QMenu;

class ParameterTable : public QTableWidget
{
    Q_OBJECT

public:
    // The code of a row stands in the vertical head, so a column is one less than the place in a row's texts.
    enum Column {
        ReadOnlyColumn = ReadOnlyValue - 1,
        HexColumn = HexValue - 1,
        ValueColumn = TextValue - 1,
        UnitColumn = UnitValue - 1,
        MinColumn = MinValue - 1,
        MaxColumn = MaxValue - 1,
        DefaultColumn = DefaultValue - 1,
        DescriptionColumn = NameValue - 1,
        ColumnCount = RowValueCount - 1
    };

    explicit ParameterTable(QWidget *parent = nullptr);

    // Appends a catalogue row; values as ReadXmlThread delivers them.
    void addRow(const QStringList &values);

    // Shows the data bytes of a reply in every row with this number in the
    // group (0 to 99).
    void showReply(int number, const QByteArray &bytes);

    // Sets the colour of every Value cell back to black.
    void resetValueColours();

    // The texts of a row, its code first.
    QStringList rowTexts(int row) const;
    QString code(int row) const;
    QString text(int row, Column column) const;

    // The detail lines of each row, in the order of the rows.
    QList<QStringList> rowDescriptions;

signals:
    void writeCurrentValue(QStringList value, bool isWriteRAM);
    void readCurrentVlue(QStringList value);

public slots:
    void cellDoubleClickedSlot(int row, int col);
    void cellClickedSlot(int row, int col);
    void writeParams();
    void readParams();
    // Takes the value that the setting helper has sent; setColor marks it as written to RAM only.
    void setParamValueSlot(QString value, bool setColor);

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    int sizeHintForColumn(int column) const override;

protected slots:
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                     const QVector<int> &roles = QVector<int>()) override;

private:
    void buildHeaders();
    void buildCornerButton();
    void keepDescriptionReadable();
    void paintCornerButton();
    bool offersNoWrite(int row) const;
    void drawChangedCells();
    void forgetRows();
    int numberOf(int row) const;

    QTimer drawingTimer;                   // runs while changed cells wait to be drawn together
    QVector<QPair<int, int>> undrawnCells; // row and column
    mutable QVector<int> rowNumbers;       // number of each row's code in its group; empty: not known
    mutable QVector<int> columnHints;      // pixels that the contents of each column need; -1: not known
    int currentRow = -1;                   // row of the last double-click
    QVector<int> rowCell;                  // row and column of the last context menu
    QMenu *menu = nullptr;
    QAction *readAction = nullptr;
    QAction *writeAction = nullptr;
    QAbstractButton *cornerButton = nullptr;
};
