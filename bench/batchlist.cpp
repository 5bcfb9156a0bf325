// SPDX-License-Identifier: GPL-3.0-or-later
// Processor time of the main thread for a batch list of all parameters, beside a bare table of the same
// texts.
#include "benchmain.h"
#include "catalogueeditor.h"
#include "parameter/parameterbatch.h"
#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "report.h"
#include "settings/applanguage.h"
#include "support/editordriver.h"

#include <QCoreApplication>
#include <QTableWidget>

#include <functional>

namespace {

constexpr int rounds = 7;

QList<BatchRow> rowsOf(const ParameterEditor &editor)
{
    QList<BatchRow> rows;
    const QList<ParameterTable *> tables = EditorDriver(&editor).pages();
    for (const ParameterTable *table : tables) {
        for (int row = 0; row < table->rowCount(); ++row)
            rows.append({true, table->rowTexts(row) << QString()}); // not read yet
    }
    return rows;
}

// Microseconds a row, the drawing that it causes included.
double costOfEach(int count, const std::function<void(int)> &act)
{
    double used = 0;
    for (int row = 0; row < count; ++row) {
        const double before = threadSeconds();
        act(row);
        QCoreApplication::processEvents();
        used += threadSeconds() - before;
    }
    return used / count * 1e6;
}

double costOfAll(const std::function<void()> &act)
{
    const double before = threadSeconds();
    act();
    QCoreApplication::processEvents();
    return (threadSeconds() - before) * 1e6;
}

void setRows(QTableWidget *table, const QList<BatchRow> &rows)
{
    table->clearContents();
    table->setRowCount(rows.size());
    for (int row = 0; row < rows.size(); ++row) {
        for (int column = 0; column < ParameterBatch::ColumnCount; ++column)
            table->setItem(row, column, new QTableWidgetItem(rows.at(row).cells.at(column)));
    }
}

void measure()
{
    writeConfiguredLanguage(QStringLiteral("zh_CN"));
    const QList<BatchRow> rows = rowsOf(*makeEditor());
    ParameterBatch list;
    list.show();
    QTableWidget bare(0, ParameterBatch::ColumnCount);
    bare.resize(list.size());
    bare.show();
    QVector<double> opening;
    QVector<double> bareOpening;
    QVector<double> reply;
    QVector<double> bareText;
    for (int round = 0; round < rounds; ++round) {
        opening.append(costOfAll([&] { list.setRows(rows); }));
        bareOpening.append(costOfAll([&] { setRows(&bare, rows); }));
        // Another value every time: a text that is there already costs nothing.
        const QByteArray bytes = QByteArray(1, 0) + char(10 + round);
        const QString text = QString::number(10 + round);
        reply.append(costOfEach(rows.size(), [&](int row) { list.showReply(row, bytes); }));
        bareText.append(costOfEach(
            rows.size(), [&](int row) { bare.item(row, ParameterBatch::RealColumn)->setText(text); }));
    }
    const auto line = [](const char *what, const QVector<double> &cost, const QVector<double> &peer) {
        return QStringList{QString::fromLatin1(what), figure(median(cost), 0), figure(median(peer), 0),
                           figure(medianRatio(cost, peer), 2), ratioSpread(cost, peer)};
    };
    printTable(QStringLiteral("Batch list of %1 rows, microseconds, drawing included, median of %2 rounds")
                   .arg(rows.size())
                   .arg(rounds),
               {{"what", "batch list", "bare table", "ratio", "spread"},
                line("all rows put in", opening, bareOpening),
                line("a reply beside its value", reply, bareText)});
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmark(argc, argv, measure);
}
