// SPDX-License-Identifier: GPL-3.0-or-later
// One group of parameters, a row each. The text of a Value cell is the value of record: what a page write
// sends, a file saves and a printout shows. Main thread; owned by ParameterEditor.
#pragma once

#include <QList>
#include <QStringList>
#include <QTableWidget>

class QAbstractButton;
class QMenu;

class ParameterTable : public QTableWidget
{
    Q_OBJECT

public:
    enum Column {
        ReadOnlyColumn,
        ServoOffColumn,
        RepowerColumn,
        VolatileColumn,
        HexColumn,
        ValueColumn,
        UnitColumn,
        MinColumn,
        MaxColumn,
        DefaultColumn,
        DescriptionColumn,
        ColumnCount
    };

    explicit ParameterTable(QWidget *parent = nullptr);

    // Appends a catalogue row; values as ReadXmlThread delivers them.
    void addRow(const QStringList &values);

    // Shows the data bytes of a reply in every row with this number in the
    // group (0 to 99).
    void showReply(int number, const QByteArray &bytes);

    // Sets the colour of every Value cell back to black.
    void resetValueColours();

    // Code, H mark, value, unit, min and max of a row: the form in which a parameter travels.
    QStringList writeRecord(int row) const;

    // True for a row that a page write leaves out: read-only, or named as reserved.
    bool isLeftOutOfWrites(int row) const;

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
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void buildHeaders();
    void buildCornerButton();
    void paintCornerButton();
    bool offersNoWrite(int row) const;
    bool isOnlineOrTell() const;

    int currentRow = -1;  // row of the last double-click
    QVector<int> rowCell; // row and column of the last context menu
    QMenu *menu = nullptr;
    QAction *readAction = nullptr;
    QAction *writeAction = nullptr;
    QAbstractButton *cornerButton = nullptr;
};
