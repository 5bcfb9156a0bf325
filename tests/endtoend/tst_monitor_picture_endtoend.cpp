// SPDX-License-Identifier: GPL-3.0-or-later
// The monitor in a main window of 1024 by 768, with the longest values that a drive can report: nothing is
// cut and nothing has to be scrolled. Run at one and at two pixels a point.
#include "monitor/parameter_monitor.h"
#include "shell/mainwindow.h"
#include "support/monitordriver.h"
#include "support/rununtil.h"
#include "support/workplace.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

#include <chrono>

namespace {

constexpr int leastReadable = 60; // pixels of a column that shows the beginning of its texts

// A motor that has turned back for long, terminals with long names, a warning and a fault with long texts.
void fillRegisters(kt500sim::SimulatedDrive *drive)
{
    drive->writeRegister(200, 0xFFFF);
    drive->writeRegister(100, 1);
    drive->writePair(401, -50000);
    drive->writeRegister(202, 1);
    drive->advance(std::chrono::seconds(60));
    for (int row = 2; row <= 16; ++row)
        drive->writeRegister(210 + row, 0x0017);
    for (int row = 1; row <= 16; ++row)
        drive->writeRegister(230 + row, 0x0010);
    drive->setWarning(10, true);
    drive->raiseFault(22);
}

// What does not fit where it stands; empty when all does.
QStringList cutOff(const Parameter_Monitor *window)
{
    QStringList found;
    const QList<QWidget *> widgets = window->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (!widget->isVisible() || widget->window() != window->window())
            continue;
        const auto *const label = qobject_cast<const QLabel *>(widget);
        const auto *const button = qobject_cast<const QPushButton *>(widget);
        const bool isBox = qobject_cast<const QComboBox *>(widget) || qobject_cast<const QLineEdit *>(widget);
        if (!label && !button && !isBox)
            continue;
        const QString name = label ? label->text() : widget->objectName();
        QSize needed = widget->minimumSizeHint();
        if (label && label->wordWrap())
            needed = QSize(0, label->heightForWidth(label->width()));
        else if (button) // the style's hint has a least width that no text needs
            needed = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
        if (needed.width() > widget->width() || needed.height() > widget->height())
            found << QStringLiteral("%1 is %2x%3 and needs %4x%5")
                         .arg(name)
                         .arg(widget->width())
                         .arg(widget->height())
                         .arg(needed.width())
                         .arg(needed.height());
        if (!widget->parentWidget()->rect().contains(widget->geometry()))
            found << name + QLatin1String(" reaches out of its panel");
    }
    return found;
}

// Columns of a table that show less of their texts than is needed to read them.
QStringList narrowColumns(const QTableWidget *table, const QList<int> &whole, int beginning)
{
    QStringList found;
    for (const int column : whole) {
        const QString head = table->horizontalHeaderItem(column)->text();
        if (table->horizontalHeader()->fontMetrics().horizontalAdvance(head) > table->columnWidth(column))
            found << head;
        for (int row = 0; row < table->rowCount(); ++row) {
            const QTableWidgetItem *const item = table->item(row, column);
            if (!item) // under one that spans two rows
                continue;
            const QFontMetrics metrics(item->data(Qt::FontRole).isNull() ? table->font() : item->font());
            if (metrics.horizontalAdvance(item->text()) > table->columnWidth(column))
                found << item->text();
        }
    }
    if (table->columnWidth(beginning) < leastReadable)
        found << QStringLiteral("column %1 has %2 pixels").arg(beginning).arg(table->columnWidth(beginning));
    if (table->horizontalScrollBar()->maximum() > 0)
        found << QStringLiteral("the table has to be scrolled sideways");
    return found;
}

} // namespace

class MonitorPictureEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void everythingFits_data();
    void everythingFits();
};

void MonitorPictureEndToEndTest::everythingFits_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "en_US";
    QTest::newRow("Chinese") << "zh_CN";
}

void MonitorPictureEndToEndTest::everythingFits()
{
    QFETCH(QString, language);
    Workplace place(language);
    place.drive->freeze();
    fillRegisters(place.drive.get());
    place.connectTo(QStringLiteral("USB"));
    QVERIFY(runUntil([&place] { return place.isShownOnline(); }, 5000));
    place.window()->showNormal();
    place.window()->resize(1024, 768);
    QTRY_COMPARE(place.window()->size(), QSize(1024, 768));
    Workplace::clickAction(place.window(), "actionParameter_Monitor");
    auto *const window = place.window()->findChild<Parameter_Monitor *>();
    QVERIFY(window);
    const MonitorDriver monitor(window);
    QTRY_VERIFY(monitor.status("Pn-F11").size() >= 9);
    QVERIFY(monitor.status("Pn-F11").startsWith(QLatin1Char('-')));
    QTRY_COMPARE(monitor.symbol("do", 16), QStringLiteral("SPL"));
    QTRY_VERIFY(!monitor.edit("faultCurrentEdit")->text().isEmpty());

    QCOMPARE(window->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(window->verticalScrollBar()->maximum(), 0);
    auto *const methods = window->findChild<QTabWidget *>(QStringLiteral("methodTabs"));
    for (int method = 0; method < methods->count(); ++method) {
        const QSignalBlocker blocker(methods);
        methods->setCurrentIndex(method);
        QCoreApplication::processEvents();
        QCOMPARE(cutOff(window).join(QLatin1String("; ")), QString());
    }
    QCOMPARE(narrowColumns(monitor.table("statusTable"), {0, 2, 3}, 1).join(QLatin1String("; ")), QString());
    for (const char *half : {"diTable", "doTable"})
        QCOMPARE(narrowColumns(monitor.table(half), {0, 1, 3}, 2).join(QLatin1String("; ")), QString());
    monitor.tabs()->setCurrentIndex(1);
    QCOMPARE(narrowColumns(monitor.table("historyTable"), {1}, 2).join(QLatin1String("; ")), QString());
}

QTEST_MAIN(MonitorPictureEndToEndTest)

#include "tst_monitor_picture_endtoend.moc"
