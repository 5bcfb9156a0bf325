// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/sampledecoding.h"

#include <QtEndian>

SampleFormat sampleFormat(const ScopeItems &items, const QString &code)
{
    const QStringList item = scopeItemOfCode(items, code);
    const QString min = item.value(scopeitem::min);
    const QString max = item.value(scopeitem::max);
    const QString unit = item.value(scopeitem::unit);

    SampleFormat format;
    format.isSigned = !code.contains(QLatin1Char('~')) && min.contains(QLatin1Char('-'));
    const QLatin1Char point('.');
    if (!min.contains(point) && !max.contains(point) && !unit.contains(point))
        return format;
    const QLatin1String hundredths(".00");
    const bool isFine =
        unit.contains(QLatin1String("0.01")) || min.contains(hundredths) || max.contains(hundredths);
    format.factor = isFine ? 0.01 : 0.1;
    format.decimals = isFine ? 2 : 1;
    return format;
}

QVector<double> decodeSamples(const QByteArray &bytes, const SampleFormat &format, bool wide)
{
    const int width = wide ? 4 : 2;
    const int count = bytes.size() / width;
    QVector<double> values;
    values.reserve(count);
    for (int i = 0; i < count; ++i) {
        const char *const at = bytes.constData() + qsizetype(i) * width;
        double raw = 0;
        if (wide)
            raw = qFromBigEndian<qint32>(at);
        else if (format.isSigned)
            raw = qFromBigEndian<qint16>(at);
        else
            raw = qFromBigEndian<quint16>(at);
        values.append(raw * format.factor);
    }
    return values;
}
