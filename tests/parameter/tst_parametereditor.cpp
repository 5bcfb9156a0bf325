// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's window: its parts, its catalogue, and what closing does.
#include "editorbench.h"

#include "link/serialport.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QAction>
#include <QLabel>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QSplitter>
#include <QToolBar>

class ParameterEditorTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void windowHasItsParts();
    void toolBarHoldsItsActionsInOrder();
    void legendNamesTheFiveSymbols();
    void pageListNamesTheTwelveGroups();
    void pageListIsAsWideAsItsLongestName_data();
    void pageListIsAsWideAsItsLongestName();
    void windowNeedsNoScrollBarAtItsFirstSize_data();
    void windowNeedsNoScrollBarAtItsFirstSize();
    void contentFollowsTheWindowsSize();
    void descriptionTellsWhatItCutsShort();
    void clickOnTheHeadFoldsTheList();
    void selectingTheHeadKeepsThePage();
    void catalogueFillsTheTwelvePages_data();
    void catalogueFillsTheTwelvePages();
    void closingKeepsTheSplitter();
    void brokenSplitterStateIsIgnored();
    void closingDuringAReadIsSafe();
    void closingDuringTheCatalogueLoadIsSafe();
    void windowStateIsReported();

private:
    TestDirectory directory;
};

void ParameterEditorTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
    SerialPort::portOpened = true;
}

void ParameterEditorTest::windowHasItsParts()
{
    const EditorBench bench;
    QCOMPARE(bench.editor->windowTitle(), QStringLiteral("Parameter Editor"));
    QCOMPARE(bench.editor->size(), QSize(700, 1000));
    QCOMPARE(bench.stack->count(), 12);
    QVERIFY(bench.progress->isModal());
    QCOMPARE(bench.progress->font().pointSize(), 9);
    QStringList texts;
    const QList<QLabel *> labels = bench.editor->findChildren<QLabel *>();
    const QLabel *note = nullptr;
    for (const QLabel *label : labels) {
        if (label->text().startsWith(QLatin1String("Note")))
            note = label;
    }
    QVERIFY(note);
    QCOMPARE(note->text(),
             QStringLiteral("Note: Double-click the Value can be call out the Parameter Setting Helper"));
    QCOMPARE(note->styleSheet(), QStringLiteral("color:red;"));
    QVERIFY(note->font().bold());
    QCOMPARE(note->font().pointSize(), 10);
}

void ParameterEditorTest::toolBarHoldsItsActionsInOrder()
{
    const EditorBench bench;
    QStringList texts;
    QStringList tips;
    const QList<QAction *> actions = bench.editor->findChild<QToolBar *>()->actions();
    for (const QAction *action : actions) {
        texts.append(action->isSeparator() ? QStringLiteral("|") : action->text());
        if (!action->text().isEmpty()) {
            QVERIFY2(!action->icon().isNull(), qPrintable(action->text()));
            QVERIFY2(!action->icon().pixmap(24, 24).isNull(), qPrintable(action->text()));
            tips.append(action->statusTip());
        }
    }
    QCOMPARE(texts, QStringList({"&Open...", "&Save", "|", "", "&Read Parameters", "&Write Parameters",
                                 "Print", "edit parameter"}));
    QCOMPARE(tips.mid(0, 5), QStringList({"Open an existing file", "Save the document to disk",
                                          "Read Parameters", "Write Parameters", "PrintPreview"}));
}

void ParameterEditorTest::legendNamesTheFiveSymbols()
{
    const EditorBench bench;
    QStringList texts;
    const QList<QLabel *> labels = bench.editor->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        texts.append(label->text());
    const QStringList legend{
        "★", "Read-only",          "■", "Set When Servo OFF",      "●", "Valid Afert Re-power on",
        "▲", "Volatile Parameter", "H", "Hex data,modified by bit"};
    const int first = texts.indexOf(legend.first());
    QVERIFY(first >= 0);
    QCOMPARE(texts.mid(first, legend.size()), legend);
}

void ParameterEditorTest::pageListNamesTheTwelveGroups()
{
    const EditorBench bench;
    QCOMPARE(bench.list->count(), 13);
    QCOMPARE(bench.list->item(0)->text(), QStringLiteral("-KT500"));
    QCOMPARE(bench.list->item(1)->text(), QStringLiteral("  -Pn-0XX Basic parameters"));
    QCOMPARE(bench.list->item(12)->text(), QStringLiteral("  -Pn-BXX Multi-segment speed group parameters"));
}

void ParameterEditorTest::pageListIsAsWideAsItsLongestName_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "en_US";
    QTest::newRow("Chinese") << "zh_CN";
}

void ParameterEditorTest::pageListIsAsWideAsItsLongestName()
{
    QFETCH(const QString, language);
    directory.setLanguage(language);
    const EditorBench bench;
    bench.editor->show();
    int widest = 0;
    for (int row = 0; row < bench.list->count(); ++row)
        widest = qMax(widest, bench.list->visualItemRect(bench.list->item(row)).width());
    const QFontMetrics metrics = bench.list->fontMetrics();
    for (int row = 0; row < bench.list->count(); ++row)
        QVERIFY(metrics.horizontalAdvance(bench.list->item(row)->text()) < bench.list->viewport()->width());
    // And no wider than that by much: the descriptions need the room.
    QVERIFY(bench.list->viewport()->width() <= widest + 16);
    QVERIFY(!bench.list->horizontalScrollBar()->isVisible());
}

void ParameterEditorTest::windowNeedsNoScrollBarAtItsFirstSize_data()
{
    pageListIsAsWideAsItsLongestName_data();
}

void ParameterEditorTest::windowNeedsNoScrollBarAtItsFirstSize()
{
    QFETCH(const QString, language);
    directory.setLanguage(language);
    const EditorBench bench;
    bench.editor->show();
    QVERIFY(bench.waitForCatalogue());
    QCOMPARE(bench.editor->size(), QSize(700, 1000));
    QVERIFY(!bench.editor->horizontalScrollBar()->isVisible());
    QVERIFY(!bench.editor->verticalScrollBar()->isVisible());
}

void ParameterEditorTest::contentFollowsTheWindowsSize()
{
    const EditorBench bench;
    bench.editor->show();
    for (const QSize size : {QSize(900, 800), QSize(1300, 1200), QSize(750, 700)}) {
        bench.editor->resize(size);
        QCoreApplication::processEvents();
        QCOMPARE(bench.editor->widget()->size(), bench.editor->viewport()->size());
        QVERIFY(bench.editor->viewport()->width() > size.width() - 10);
    }
}

void ParameterEditorTest::descriptionTellsWhatItCutsShort()
{
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    const QTableWidgetItem *const cell = bench.page(3)->item(0, ParameterTable::DescriptionColumn);
    QVERIFY(!cell->text().isEmpty());
    QCOMPARE(cell->toolTip(), cell->text());
}

void ParameterEditorTest::clickOnTheHeadFoldsTheList()
{
    const EditorBench bench;
    bench.editor->show();
    const auto clickHead = [&bench] {
        QTest::mouseClick(bench.list->viewport(), Qt::LeftButton, {},
                          bench.list->visualItemRect(bench.list->item(0)).center());
    };
    clickHead();
    QCOMPARE(bench.list->item(0)->text(), QStringLiteral("+KT500"));
    for (int row = 1; row < 13; ++row)
        QVERIFY(bench.list->item(row)->isHidden());
    clickHead();
    QCOMPARE(bench.list->item(0)->text(), QStringLiteral("-KT500"));
    for (int row = 1; row < 13; ++row)
        QVERIFY(!bench.list->item(row)->isHidden());
}

void ParameterEditorTest::selectingTheHeadKeepsThePage()
{
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.list->setCurrentRow(5);
    QCOMPARE(bench.stack->currentIndex(), 4);
    bench.list->setCurrentRow(0);
    QCOMPARE(bench.stack->currentIndex(), 4);
    bench.list->setCurrentRow(12);
    QCOMPARE(bench.stack->currentIndex(), 11);
}

void ParameterEditorTest::catalogueFillsTheTwelvePages_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QVector<int>>("rows");
    QTest::newRow("English") << "en_US" << QVector<int>{50, 20, 60, 34, 21, 19, 88, 18, 19, 45, 68, 78};
    QTest::newRow("Chinese") << "zh_CN" << QVector<int>{21, 20, 99, 36, 21, 19, 88, 18, 62, 41, 68, 78};
}

void ParameterEditorTest::catalogueFillsTheTwelvePages()
{
    QFETCH(QString, language);
    QFETCH(QVector<int>, rows);
    directory.setLanguage(language);
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    QCOMPARE(bench.stack->currentIndex(), 0);
    for (int index = 0; index < 12; ++index) {
        QCOMPARE(bench.page(index)->rowCount(), rows.at(index));
        QCOMPARE(bench.page(index)->rowDescriptions.size(), rows.at(index));
    }
}

void ParameterEditorTest::closingKeepsTheSplitter()
{
    QByteArray state;
    {
        const EditorBench bench;
        bench.editor->show();
        auto *const splitter = bench.editor->findChild<QSplitter *>();
        splitter->setSizes({250, 450});
        state = splitter->saveState();
        QSignalSpy closed(bench.editor.data(), &ParameterEditor::subWindowClosed);
        bench.editor->close();
        QCOMPARE(closed.count(), 1);
    }
    const QSettings settings(QStringLiteral("settings.ini"), QSettings::IniFormat);
    QCOMPARE(settings.value(QStringLiteral("splitterSizes/splitterSizes")).toByteArray(), state);
    const EditorBench bench;
    bench.editor->show();
    QCOMPARE(bench.editor->findChild<QSplitter *>()->saveState(), state);
}

void ParameterEditorTest::brokenSplitterStateIsIgnored()
{
    {
        QSettings settings(QStringLiteral("settings.ini"), QSettings::IniFormat);
        settings.setValue(QStringLiteral("splitterSizes/splitterSizes"), QStringLiteral("no state"));
    }
    const EditorBench bench;
    bench.editor->show();
    const QList<int> sizes = bench.editor->findChild<QSplitter *>()->sizes();
    QCOMPARE(sizes.size(), 2);
    QVERIFY(sizes.at(1) > 0);
}

void ParameterEditorTest::closingDuringAReadIsSafe()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.editor->setAttribute(Qt::WA_DeleteOnClose);
    bench.editor->show();
    bench.peer.intercept = [&bench](const QByteArray &, const QByteArray &usual) {
        if (bench.peer.frames.size() == 20)
            QMetaObject::invokeMethod(bench.editor, "close", Qt::QueuedConnection);
        return usual;
    };
    bench.editor->readPageSlt();
    QTRY_VERIFY(!bench.editor);
    const int frames = bench.peer.frames.size();
    QVERIFY(frames >= 20 && frames < 25);
}

void ParameterEditorTest::closingDuringTheCatalogueLoadIsSafe()
{
    for (int i = 0; i < 5; ++i) {
        ParameterEditor editor;
        editor.show();
    }
    // Rows of a load that has ended do not reach anybody.
    QCoreApplication::processEvents();
}

void ParameterEditorTest::windowStateIsReported()
{
    const EditorBench bench;
    QSignalSpy states(bench.editor.data(), &ParameterEditor::windowStateChanged);
    bench.editor->showMaximized();
    QCOMPARE(states.last().first().toString(), QStringLiteral("Parameter Editor"));
    bench.editor->showNormal();
    QCOMPARE(states.last().first().toString(), QString());
    bench.editor->showMaximized();
    bench.editor->hide();
    QCOMPARE(states.last().first().toString(), QString());
}

QTEST_MAIN(ParameterEditorTest)
#include "tst_parametereditor.moc"
