// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/pdffile.h"
#include "support/fulldisk.h"
#include "support/testdirectory.h"

#include <QDir>
#include <QPainter>
#include <QPrinter>
#include <QTest>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void paintSheets(QPrinter *printer, int count)
{
    QPainter painter(printer);
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            printer->newPage();
        painter.drawText(100, 100, QStringLiteral("Sheet %1").arg(i));
    }
}

} // namespace

class PdfFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void pdfFileIsWhole();
    void pdfReplacesAnOlderFile();
    void pdfNeedsNoRoomElsewhere();
    void pdfIsWrittenWhereNoSecondFileFits();
    void failedPdfLeavesWhatWasThere_data();
    void failedPdfLeavesWhatWasThere();
#ifdef Q_OS_UNIX
    void fullDiskLeavesNoHalfPdf();
#endif

private:
    TestDirectory directory;
};

void PdfFileTest::init()
{
    directory.clear();
}

void PdfFileTest::pdfFileIsWhole()
{
    int resolution = 0;
    const QString path = QStringLiteral("参数 list.pdf");
    QVERIFY(writePdfFile(path, QStringLiteral("Title of it"), [&](QPrinter *printer) {
        resolution = printer->resolution();
        QCOMPARE(printer->outputFormat(), QPrinter::PdfFormat);
        paintSheets(printer, 3);
    }));
    QVERIFY(resolution < 200); // the screen's, not the printer's
    const QByteArray content = contentOf(path);
    QVERIFY(content.startsWith("%PDF-1."));
    QVERIFY(content.trimmed().endsWith("%%EOF"));
    QCOMPARE(content.count("/Type /Page\n"), 3);
    QCOMPARE(QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList{path});
}

void PdfFileTest::pdfReplacesAnOlderFile()
{
    QFile older(QStringLiteral("older.pdf"));
    QVERIFY(older.open(QIODevice::WriteOnly));
    older.write(QByteArray(5000000, 'x'));
    older.close();
    QVERIFY(writePdfFile(older.fileName(), QString(), [](QPrinter *printer) { paintSheets(printer, 3); }));
    QVERIFY(contentOf(older.fileName()).startsWith("%PDF-1."));
    QVERIFY(older.size() < 1000000);
}

void PdfFileTest::pdfNeedsNoRoomElsewhere()
{
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/nowhere");
    QStringList during;
    const bool isWritten = writePdfFile(QStringLiteral("list.pdf"), QString(), [&during](QPrinter *printer) {
        paintSheets(printer, 1);
        during = QDir().entryList(QDir::Files | QDir::Hidden);
    });
    qputenv("TMPDIR", before);
    QVERIFY(isWritten);
    QCOMPARE(during.size(), 1);
    QVERIFY(during.first() != QLatin1String("list.pdf"));
    QCOMPARE(QDir().entryList(QDir::Files | QDir::Hidden), QStringList{"list.pdf"});
    QVERIFY(contentOf(QStringLiteral("list.pdf")).startsWith("%PDF-1."));
}

void PdfFileTest::pdfIsWrittenWhereNoSecondFileFits()
{
    // No name beside it can be longer.
    const QString path = QString(250, QLatin1Char('n')) + QLatin1String(".pdf");
    for (int i = 0; i < 2; ++i) {
        QVERIFY(writePdfFile(path, QString(), [](QPrinter *printer) { paintSheets(printer, 2); }));
        QVERIFY(contentOf(path).trimmed().endsWith("%%EOF"));
        QCOMPARE(QDir().entryList(QDir::Files | QDir::Hidden), QStringList{path});
    }
}

void PdfFileTest::failedPdfLeavesWhatWasThere_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("printsNothing");

    QTest::newRow("no such folder") << "missing/of.pdf" << false;
    QTest::newRow("a folder by that name") << "folder.pdf" << false;
    QTest::newRow("printing fails") << "older.pdf" << true;
}

void PdfFileTest::failedPdfLeavesWhatWasThere()
{
    QFETCH(const QString, path);
    QFETCH(const bool, printsNothing);
    QVERIFY(QDir().mkdir(QStringLiteral("folder.pdf")));
    QFile older(QStringLiteral("older.pdf"));
    QVERIFY(older.open(QIODevice::WriteOnly));
    older.write("what was there");
    older.close();
    QVERIFY(!writePdfFile(path, QString(), [&](QPrinter *printer) {
        if (!printsNothing)
            paintSheets(printer, 3);
    }));
    QCOMPARE(contentOf(older.fileName()), QByteArray("what was there"));
    QCOMPARE(QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList({"folder.pdf", "older.pdf"}));
}

#ifdef Q_OS_UNIX
void PdfFileTest::fullDiskLeavesNoHalfPdf()
{
    QFile older(QStringLiteral("older.pdf"));
    QVERIFY(older.open(QIODevice::WriteOnly));
    older.write("what was there");
    older.close();
    {
        const FullDisk full(2000);
        for (const char *path : {"older.pdf", "new.pdf"})
            QVERIFY(!writePdfFile(QLatin1String(path), QString(),
                                  [](QPrinter *printer) { paintSheets(printer, 3); }));
    }
    QCOMPARE(contentOf(older.fileName()), QByteArray("what was there"));
    QCOMPARE(QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"older.pdf"});
}
#endif

QTEST_MAIN(PdfFileTest)
#include "tst_pdffile.moc"
