// SPDX-License-Identifier: GPL-3.0-or-later
// The printed table on paper that is no paper for it.
#include "parameter/parameterprint.h"
#include "parameter/printedpages.h"

#include <QImage>
#include <QPainter>
#include <QTest>
#include <QTextDocument>

class ParameterPrintPaperTest : public QObject
{
    Q_OBJECT

private slots:
    void lowPaperGivesAPageForEachRowAtMost_data();
    void lowPaperGivesAPageForEachRowAtMost();
};

namespace {

constexpr int rowCount = 100;
constexpr int resolution = 96; // dots per inch
constexpr int width = 794;     // dots, of A4
constexpr int margin = 76;     // dots, of 2 cm

void fill(QTextDocument *document)
{
    ParameterPrint print(document);
    print.begin(
        {"Function Code", "1", "2", "3", "4", "H", "Value", "Uint", "Min", "Max", "Default", "Description"});
    QList<QStringList> rows;
    for (int i = 0; i < rowCount; ++i)
        rows.append({QStringLiteral("Pn-0%1").arg(i, 2, 10, QLatin1Char('0')), "", "", "", "", "H", "1", "pp",
                     "0", "9", "0", "Reserved"});
    print.addRows(rows);
    print.finish();
}

} // namespace

void ParameterPrintPaperTest::lowPaperGivesAPageForEachRowAtMost_data()
{
    QTest::addColumn<int>("height"); // dots
    QTest::newRow("one dot") << 1;
    QTest::newRow("one margin") << margin;
    QTest::newRow("two margins") << 2 * margin;
    QTest::newRow("a dot more") << 2 * margin + 1;
    for (int more = 10; more <= 60; more += 2)
        QTest::addRow("%d dots more", more) << 2 * margin + more;
}

void ParameterPrintPaperTest::lowPaperGivesAPageForEachRowAtMost()
{
    QFETCH(int, height);
    QTextDocument document;
    fill(&document);
    QImage paper(width, height, QImage::Format_RGB32);
    paper.setDotsPerMeterX(qRound(resolution / 0.0254));
    paper.setDotsPerMeterY(qRound(resolution / 0.0254));
    const PrintedPages pages(document, &paper, paper.size());
    QVERIFY(pages.count() >= 1);
    // The heading may take a page of its own.
    QVERIFY2(pages.count() <= rowCount + 1, qPrintable(QString::number(pages.count())));
    QPainter painter(&paper);
    for (int page = 0; page < pages.count(); ++page)
        pages.paint(&painter, page);
}

QTEST_MAIN(ParameterPrintPaperTest)
#include "tst_parameterprint_paper.moc"
