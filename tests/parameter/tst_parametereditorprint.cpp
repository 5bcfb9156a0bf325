// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's way to paper, from the button to the preview.
#include "printbench.h"
#include "testfiles.h"

#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "parameter/printdialogs.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProgressDialog>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTranslator>

using namespace printbench;
using namespace testfiles;

class ParameterEditorPrintTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void printButtonOpensThePreview();
    void previewIsForAPrinterOfHighResolution();
    void previewKeepsTheMaximizeButtonAlone();
    void transformShowsThePageItIsAt();
    void previewPaintsAgainWhenAsked();
    void previewLeavesNoProgressDialog();
    void previewThatNeverPaintedLeavesNoProgressDialog();
    void previewOpensLargeAndFitsTheWidth();
    void escapeEndsTheTransform_data();
    void escapeEndsTheTransform();
    void documentHoldsAllPagesAsTheyStand_data();
    void documentHoldsAllPagesAsTheyStand();
    void laterPrintShowsLaterTexts();
    void textEditStaysHidden();
    void printingAsksTheDriveForNothing();
    void printingWithinPrintingIsLeftOut();
    void paintingWithoutAPrintoutDoesNothing();

private:
    TestDirectory directory;
};

void ParameterEditorPrintTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
}

void ParameterEditorPrintTest::printButtonOpensThePreview()
{
    const Bench bench;
    QVERIFY(bench.waitForFewRows());
    const PrintDialogs dialogs;
    bench.action("printAction")->trigger();
    QCOMPARE(dialogs.previews.size(), 1);
    QVERIFY(dialogs.previews.first() & Qt::Window);
    QVERIFY(!(dialogs.previews.first() & Qt::WindowContextHelpButtonHint));
    QCOMPARE(dialogs.progress, QStringList{transformProgress});
    QVERIFY(!dialogs.wasProgressOpen);
}

void ParameterEditorPrintTest::previewIsForAPrinterOfHighResolution()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const PrintDialogs dialogs;
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(dialogs.resolutions, QList<int>{QPrinter(QPrinter::HighResolution).resolution()});
    QVERIFY(dialogs.resolutions.first() > 2 * QPrinter(QPrinter::ScreenResolution).resolution());
}

void ParameterEditorPrintTest::previewKeepsTheMaximizeButtonAlone()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    PrintDialogs dialogs;
    const Qt::WindowFlags hints = Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint |
                                  Qt::WindowCloseButtonHint | Qt::WindowContextHelpButtonHint |
                                  Qt::WindowFullscreenButtonHint;
    // Where dialogs come with every button.
    dialogs.whenPreviewIsMade = [hints](QPrintPreviewDialog *preview) {
        preview->setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | hints);
    };
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(dialogs.previews.size(), 1);
    QCOMPARE(dialogs.previews.first() & hints, Qt::WindowFlags(Qt::WindowMaximizeButtonHint));
    QCOMPARE(int(dialogs.previews.first() & Qt::WindowType_Mask), int(Qt::Window));
}

void ParameterEditorPrintTest::transformShowsThePageItIsAt()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    PrintDialogs dialogs;
    // Rows of the document beside the progress, at each time that the transform lets events through.
    QStringList steps;
    QTimer look;
    dialogs.whileTransformed = [&] { look.start(0); };
    dialogs.whilePreviewed = [&look] { look.stop(); };
    connect(&look, &QTimer::timeout, &look, [&] {
        const auto *const bar = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
        if (!bar)
            return;
        // A paragraph a cell, and a few above and below the table. The table itself is not to be had yet.
        const int rows = bench.text()->document()->blockCount() / 12;
        steps.append(QStringLiteral("%1: %2").arg(bar->value()).arg(rows));
    });
    bench.editor.doPrintPreviewSlot();
    steps.removeDuplicates();
    QCOMPARE(steps, (QStringList{"0: 11", "1: 21", "2: 31", "3: 41", "4: 51", "5: 61", "6: 71", "7: 81",
                                 "8: 91", "9: 101", "10: 111", "11: 121"}));
}

void ParameterEditorPrintTest::previewPaintsAgainWhenAsked()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    PrintDialogs dialogs;
    int progressCount = 0;
    // A change of the paper in the preview asks for the pages once more.
    dialogs.whilePreviewed = [&] {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QStringLiteral("again.pdf"));
        bench.editor.printPreviewSlot(&printer);
        progressCount = dialogs.progress.size();
    };
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(progressCount, 1);
    QVERIFY(contentOf(QStringLiteral("again.pdf")).count("/Type /Page\n") > 1);
}

void ParameterEditorPrintTest::previewLeavesNoProgressDialog()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const PrintDialogs dialogs;
    bench.editor.doPrintPreviewSlot();
    const QList<QProgressDialog *> bars = bench.editor.findChildren<QProgressDialog *>();
    for (const QProgressDialog *bar : bars)
        QVERIFY(!bar->isVisible());
    QVERIFY(!QApplication::activeModalWidget());
}

void ParameterEditorPrintTest::documentHoldsAllPagesAsTheyStand_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QStringList>("firstAndLastHead");

    QTest::newRow("English") << "en_US" << 520 << QStringList{"Function Code", "Description"};
    QTest::newRow("Chinese") << "zh_CN" << 571 << QStringList{"功能码", "参数名称"};
}

void ParameterEditorPrintTest::documentHoldsAllPagesAsTheyStand()
{
    QFETCH(const QString, language);
    QFETCH(const int, rows);
    QFETCH(const QStringList, firstAndLastHead);
    directory.setLanguage(language);
    QTranslator translator;
    if (language == QLatin1String("zh_CN")) {
        QVERIFY(translator.load(QStringLiteral(":/lan/sd_zh_CN.qm")));
        QCoreApplication::installTranslator(&translator);
    }
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    const PrintDialogs dialogs;
    bench.editor.doPrintPreviewSlot();

    // The series name is not translated.
    QCOMPARE(bench.text()->document()->firstBlock().next().text(), QStringLiteral("KT500 Servo Parameter"));
    QVERIFY(bench.printed());
    QCOMPARE(bench.printed()->columns(), 12);
    QCOMPARE(bench.printed()->rows(), rows + 1);
    QCOMPARE(bench.printedText(0, 0), firstAndLastHead.first());
    QCOMPARE(bench.printedText(0, 11), firstAndLastHead.last());
    for (int column = 0; column < 11; ++column)
        QCOMPARE(bench.printedText(0, column + 1), bench.page(0)->horizontalHeaderItem(column)->text());
    int printedRow = 1;
    for (int index = 0; index < 12; ++index) {
        const ParameterTable *const page = bench.page(index);
        for (int row = 0; row < page->rowCount(); ++row, ++printedRow) {
            QCOMPARE(bench.printedText(printedRow, 0), page->code(row));
            for (int column = 0; column < 11; ++column)
                QCOMPARE(bench.printedText(printedRow, column + 1), page->item(row, column)->text());
        }
    }
    QCOMPARE(printedRow, rows + 1);
}

void ParameterEditorPrintTest::laterPrintShowsLaterTexts()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const PrintDialogs dialogs;
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(bench.printedText(8, 6), QStringLiteral("200.0"));
    bench.page(0)->item(7, ParameterTable::ValueColumn)->setText(QStringLiteral("312.5"));
    // The document stays as it was until the next time.
    QCOMPARE(bench.printedText(8, 6), QStringLiteral("200.0"));
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(bench.printedText(8, 6), QStringLiteral("312.5"));
    QCOMPARE(bench.printed()->rows(), 12 * 10 + 1);
}

void ParameterEditorPrintTest::textEditStaysHidden()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    PrintDialogs dialogs;
    bool wasVisible = true;
    dialogs.whilePreviewed = [&] { wasVisible = bench.text()->isVisible(); };
    bench.editor.doPrintPreviewSlot();
    QVERIFY(!wasVisible);
    QVERIFY(!bench.text()->isVisible());
    QCOMPARE(bench.text()->minimumSize(), QSize(1000, 800));
    QCOMPARE(bench.text()->maximumSize(), QSize(1000, 800));
    QCOMPARE(bench.text()->alignment(), Qt::AlignCenter);
}

void ParameterEditorPrintTest::printingAsksTheDriveForNothing()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const QSignalSpy frames(&bench.editor,
                            qOverload<QByteArray, QString>(&ParameterEditor::writeToSerialPort));
    const PrintDialogs dialogs;
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(frames.count(), 0);
}

void ParameterEditorPrintTest::printingWithinPrintingIsLeftOut()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const PrintDialogs dialogs;
    // Comes up while the transformation lets events through.
    QTimer::singleShot(0, &bench.editor, &ParameterEditor::doPrintPreviewSlot);
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(dialogs.previews.size(), 1);
    QCOMPARE(bench.printed()->rows(), 12 * 10 + 1);
}

void ParameterEditorPrintTest::paintingWithoutAPrintoutDoesNothing()
{
    Bench bench;
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QStringLiteral("none.pdf"));
    bench.editor.printPreviewSlot(&printer);
    QVERIFY(!QFile::exists(QStringLiteral("none.pdf")));
}

void ParameterEditorPrintTest::previewThatNeverPaintedLeavesNoProgressDialog()
{
    const Bench bench;
    QVERIFY(bench.waitForFewRows());
    PrintDialogs dialogs;
    dialogs.whenPreviewIsMade = [](QPrintPreviewDialog *preview) {
        const auto *const pages = preview->findChild<QPrintPreviewWidget *>();
        QObject::disconnect(pages, &QPrintPreviewWidget::paintRequested, preview, nullptr);
    };
    bench.action("printAction")->trigger();
    QCOMPARE(dialogs.previews.size(), 1);
    QVERIFY(dialogs.wasProgressOpen);
    const QList<QProgressDialog *> bars = bench.editor.findChildren<QProgressDialog *>();
    for (const QProgressDialog *bar : bars)
        QVERIFY(!bar->isVisible());
}

void ParameterEditorPrintTest::previewOpensLargeAndFitsTheWidth()
{
    const Bench bench;
    QVERIFY(bench.waitForFewRows());
    PrintDialogs dialogs;
    QSize size;
    int zoomMode = -1;
    dialogs.whilePreviewed = [&] {
        const QWidget *const preview = QApplication::activeModalWidget();
        size = preview->size();
        zoomMode = preview->findChild<QPrintPreviewWidget *>()->zoomMode();
    };
    bench.action("printAction")->trigger();
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    QCOMPARE(size, QSize(qRound(screen.width() * 0.9), qRound(screen.height() * 0.9)));
    QCOMPARE(zoomMode, int(QPrintPreviewWidget::FitToWidth));
}

void ParameterEditorPrintTest::escapeEndsTheTransform_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("preview") << "printAction";
    QTest::newRow("PDF") << "createPDFAction";
}

void ParameterEditorPrintTest::escapeEndsTheTransform()
{
    QFETCH(const QString, action);
    const Bench bench;
    QVERIFY(bench.waitForFewRows());
    PrintDialogs dialogs;
    dialogs.nameToGive = QStringLiteral("list.pdf");
    dialogs.whileTransformed = [&bench] {
        QTimer::singleShot(0, qApp, [&bench] {
            const QList<QProgressDialog *> bars = bench.editor.findChildren<QProgressDialog *>();
            for (QProgressDialog *bar : bars) {
                if (bar->isVisible())
                    QTest::keyClick(bar, Qt::Key_Escape);
            }
        });
    };
    const ModalAnswers noBox;
    bench.action(qPrintable(action))->trigger();
    QVERIFY(dialogs.previews.isEmpty());
    QVERIFY(!QFile::exists(QStringLiteral("list.pdf")));
    QVERIFY(!QApplication::activeModalWidget());
    // And it can be done again.
    dialogs.whileTransformed = nullptr;
    bench.action("printAction")->trigger();
    QCOMPARE(dialogs.previews.size(), 1);
}

QTEST_MAIN(ParameterEditorPrintTest)
#include "tst_parametereditorprint.moc"
