// SPDX-License-Identifier: GPL-3.0-or-later
// Values of every row of the catalogues, to words and back to their texts.
#include "catalogue/doubleaddress.h"
#include "catalogue/parametercatalogue.h"
#include "catalogue/parametercode.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>

namespace {

struct Row
{
    QString code;
    QString mark;
    QString byDefault;
    QString unit;
    QString min;
    QString max;
};

QList<Row> rowsOf(const QString &path)
{
    QFile file(path);
    QList<Row> rows;
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    readParameterCatalogue(file.readAll(), [&rows](int, const QStringList &values, const QStringList &) {
        rows.append({shortCode(values.at(1)),
                     values.at(3) == QLatin1String("1") ? QStringLiteral("H") : QString(), values.at(13),
                     values.at(14), values.at(15), values.at(16)});
    });
    return rows;
}

int digitsOf(const QString &text)
{
    const int point = text.indexOf(QLatin1Char('.'));
    return point < 0 ? 0 : text.size() - point - 1;
}

// Values of the row's resolution: the limits, the default and some between the limits.
QStringList valuesOf(const Row &row, QRandomGenerator *random)
{
    QStringList values;
    if (row.max.contains(QLatin1String("0x"))) {
        for (int i = 0; i < 8; ++i)
            values.append(QStringLiteral("0x%1")
                              .arg(random->bounded(0x10000), 4, 16, QLatin1Char('0'))
                              .toUpper()
                              .replace(QLatin1Char('X'), QLatin1Char('x')));
        return values;
    }
    if (row.min.isEmpty() || row.max.isEmpty())
        return values;
    values << row.min << row.max;
    const int digits = qMax(digitsOf(row.min), digitsOf(row.max));
    const double scale = std::pow(10, digits);
    const double low = row.min.toDouble() * scale;
    const double span = row.max.toDouble() * scale - low;
    for (int i = 0; i < 8; ++i) {
        const double number = std::floor(low + span * random->generateDouble());
        values.append(QString::number(number / scale, 'f', digits));
    }
    if (!row.byDefault.isEmpty() && digitsOf(row.byDefault) == digits)
        values.append(row.byDefault);
    return values;
}

} // namespace

class ParameterCodeCatalogueTest : public QObject
{
    Q_OBJECT

private slots:
    void everyRowGivesItsTextBack_data();
    void everyRowGivesItsTextBack();
};

void ParameterCodeCatalogueTest::everyRowGivesItsTextBack_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("rowCount");
    QTest::newRow("English") << ":/parameter/parameter/parameters_en_US.xml" << 520;
    QTest::newRow("Chinese") << ":/parameter/parameter/parameters_zh_CN.xml" << 571;
}

void ParameterCodeCatalogueTest::everyRowGivesItsTextBack()
{
    QFETCH(QString, path);
    QFETCH(int, rowCount);
    const QList<Row> rows = rowsOf(path);
    QCOMPARE(rows.size(), rowCount);
    QRandomGenerator random(20260101);
    int tried = 0;
    for (const Row &row : rows) {
        const QStringList values = valuesOf(row, &random);
        for (const QString &value : values) {
            // A 16-bit row of negative range shows its raw number, unless it begins at -300.
            if (value.startsWith(QLatin1Char('-')) && !isDouble(row.code) && row.min.toInt() != -300)
                continue;
            const QByteArray bytes = encodeValue(row.code, row.mark, value, row.unit, row.min, row.max);
            QCOMPARE(bytes.size(), isDouble(row.code) ? 4 : 2);
            const QString back =
                decodeValue(QString::fromLatin1(bytes.toHex()), row.mark, row.unit, row.min, row.max);
            // A 32-bit row of hexadecimal form shows eight digits.
            const QString expected = back.size() == 10 && value.startsWith(QLatin1String("0x"))
                                         ? QLatin1String("0x0000") + value.mid(2)
                                         : value;
            QVERIFY2(back == expected, qPrintable(row.code + ": " + value + " came back as " + back));
            ++tried;
        }
    }
    QVERIFY(tried > 4000);
}

QTEST_GUILESS_MAIN(ParameterCodeCatalogueTest)
#include "tst_parametercode_catalogue.moc"
