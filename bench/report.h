// SPDX-License-Identifier: GPL-3.0-or-later
// Figures of a benchmark: the middle one of several runs, and the table that a person reads. Any thread.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <ctime>

// The middle value, or the mean of the two middle ones; 0 for none.
double median(QVector<double> values);

// 0 for none.
double mean(const QVector<double> &values);

// The median of a[i] / b[i]: runs that stood side by side are compared with each other, so that a machine
// that slows down meanwhile slows both.
double medianRatio(const QVector<double> &a, const QVector<double> &b);

// "from 0.61 to 0.68": the spread of the ratios behind medianRatio().
QString ratioSpread(const QVector<double> &a, const QVector<double> &b);

QString figure(double value, int decimals);

// Prints the title and the rows, columns aligned; the first row is the head.
void printTable(const QString &title, const QVector<QStringList> &rows);

// Processor time that the calling thread has used, in seconds.
double threadSeconds();
// The same of all threads of the process.
double processSeconds();
