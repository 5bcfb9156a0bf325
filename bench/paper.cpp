// SPDX-License-Identifier: GPL-3.0-or-later
// Processor time for the printout of all parameters as a PDF, beside Qt's own printing of the same document.
#include "benchmain.h"
#include "catalogueeditor.h"
#include "parameter/parametereditor.h"
#include "parameter/parameterprint.h"
#include "parameter/parametertable.h"
#include "parameter/printedpages.h"
#include "report.h"
#include "settings/applanguage.h"
#include "support/editordriver.h"

#include <QFileInfo>
#include <QPrinter>
#include <QTextDocument>

#include <functional>
#include <stdexcept>

namespace {

constexpr int rounds = 7;

using Page = QList<QStringList>;

QList<Page> pagesOf(const ParameterEditor &editor)
{
    QList<Page> pages;
    const QList<ParameterTable *> tables = EditorDriver(&editor).pages();
    for (const ParameterTable *table : tables) {
        Page page;
        for (int row = 0; row < table->rowCount(); ++row)
            page.append(table->rowTexts(row));
        pages.append(page);
    }
    return pages;
}

void fill(QTextDocument *document, const QList<Page> &pages)
{
    ParameterPrint print(document);
    print.begin(pages.first().first());
    for (const Page &page : pages)
        print.addRows(page);
    print.finish();
}

// Milliseconds; the file is there afterwards and not empty.
double pdfCost(const QString &fileName, const std::function<void(QPrinter *)> &print)
{
    const double before = threadSeconds();
    {
        QPrinter printer(QPrinter::ScreenResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(fileName);
        print(&printer);
    }
    const double used = threadSeconds() - before;
    if (QFileInfo(fileName).size() == 0)
        throw std::runtime_error("no PDF was written");
    return used * 1e3;
}

QStringList measure(const QString &language)
{
    writeConfiguredLanguage(language);
    const QList<Page> pages = pagesOf(*makeEditor());
    int rowCount = 0;
    for (const Page &page : pages)
        rowCount += page.size();
    QVector<double> filling;
    QVector<double> ours;
    QVector<double> qts;
    for (int round = 0; round < rounds; ++round) {
        QTextDocument document;
        const double before = threadSeconds();
        fill(&document, pages);
        filling.append((threadSeconds() - before) * 1e3);
        ours.append(pdfCost(QStringLiteral("ours.pdf"),
                            [&document](QPrinter *printer) { printParameters(document, printer); }));
        qts.append(
            pdfCost(QStringLiteral("qts.pdf"), [&document](QPrinter *printer) { document.print(printer); }));
    }
    return {language,
            QString::number(rowCount),
            figure(median(filling), 0),
            figure(median(ours), 0),
            figure(median(qts), 0),
            figure(medianRatio(ours, qts), 2),
            ratioSpread(ours, qts)};
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmark(argc, argv, [] {
        printTable(QStringLiteral("PDF of all parameters, milliseconds, median of %1 rounds").arg(rounds),
                   {{"catalogue", "rows", "filling the document", "its PDF", "QTextDocument::print", "ratio",
                     "spread"},
                    measure(QStringLiteral("zh_CN")),
                    measure(QStringLiteral("en_US"))});
    });
}
