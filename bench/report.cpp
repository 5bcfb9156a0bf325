// SPDX-License-Identifier: GPL-3.0-or-later
#include "report.h"

#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <numeric>

#include <time.h>

namespace {

QVector<double> ratios(const QVector<double> &a, const QVector<double> &b)
{
    QVector<double> list;
    for (int i = 0; i < qMin(a.size(), b.size()); ++i)
        list.append(a.at(i) / b.at(i));
    return list;
}

double clockSeconds(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

} // namespace

double median(QVector<double> values)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    const int middle = values.size() / 2;
    return values.size() % 2 == 1 ? values.at(middle) : (values.at(middle - 1) + values.at(middle)) / 2;
}

double mean(const QVector<double> &values)
{
    return values.isEmpty() ? 0 : std::accumulate(values.begin(), values.end(), 0.0) / values.size();
}

double medianRatio(const QVector<double> &a, const QVector<double> &b)
{
    return median(ratios(a, b));
}

QString ratioSpread(const QVector<double> &a, const QVector<double> &b)
{
    const QVector<double> list = ratios(a, b);
    if (list.isEmpty())
        return {};
    const auto [least, most] = std::minmax_element(list.begin(), list.end());
    return QStringLiteral("from %1 to %2").arg(figure(*least, 2), figure(*most, 2));
}

QString figure(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

void printTable(const QString &title, const QVector<QStringList> &rows)
{
    QVector<int> widths;
    for (const QStringList &row : rows) {
        for (int column = 0; column < row.size(); ++column) {
            if (column == widths.size())
                widths.append(0);
            widths[column] = qMax(widths.at(column), row.at(column).size());
        }
    }
    QTextStream out(stdout);
    out << '\n' << title << '\n';
    for (const QStringList &row : rows) {
        QString line;
        for (int column = 0; column < row.size(); ++column) {
            const QString cell = row.at(column);
            line += column == 0 ? cell.leftJustified(widths.at(column))
                                : QLatin1String("  ") + cell.rightJustified(widths.at(column));
        }
        out << "  " << line << '\n';
    }
}

double threadSeconds()
{
    return clockSeconds(CLOCK_THREAD_CPUTIME_ID);
}

double processSeconds()
{
    return clockSeconds(CLOCK_PROCESS_CPUTIME_ID);
}
