// SPDX-License-Identifier: GPL-3.0-or-later
// The editor alone, its frames answered by a peer that stands in for the link.
#include "link/serialport.h"
#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "support/modalanswers.h"
#include "support/registerpeer.h"
#include "support/testdirectory.h"
#include "support/wire.h"

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QProgressDialog>
#include <QSettings>
#include <QSignalSpy>
#include <QSplitter>
#include <QStackedWidget>
#include <QTest>
#include <QToolBar>

namespace {

const QString readingDone = QStringLiteral("Parameters reading completed");
const QString writingDone = QStringLiteral("Parameters writing completed");
const QString requestTimeout = QStringLiteral("Request Timeout!");
const QString writeTimeout = QStringLiteral("Write Timeout!");

// An editor with its catalogue loaded and a peer behind it.
class Bench
{
public:
    Bench()
    {
        QObject::connect(editor.data(), qOverload<QByteArray, QString>(&ParameterEditor::writeToSerialPort),
                         &peer, &RegisterPeer::take);
        QObject::connect(&peer, &RegisterPeer::reply, editor.data(), &ParameterEditor::handleBaseParameter);
        list = editor->findChild<QListWidget *>();
        stack = editor->findChild<QStackedWidget *>();
        progress = editor->findChild<QProgressDialog *>();
    }
    ~Bench() { delete editor; }
    Q_DISABLE_COPY_MOVE(Bench)

    bool waitForCatalogue() const
    {
        return QTest::qWaitFor([this] { return list->currentRow() == 1; });
    }
    ParameterTable *page(int index) const { return qobject_cast<ParameterTable *>(stack->widget(index)); }
    int rowOf(int index, const QString &code) const
    {
        for (int row = 0; row < page(index)->rowCount(); ++row) {
            if (page(index)->code(row) == code)
                return row;
        }
        return -1;
    }
    QString value(int index, const QString &code) const
    {
        return page(index)->text(rowOf(index, code), ParameterTable::ValueColumn);
    }
    QColor colour(int index, const QString &code) const
    {
        return page(index)->item(rowOf(index, code), ParameterTable::ValueColumn)->foreground().color();
    }
    // Leaves the named rows only, so that a page write is short.
    void keepOnly(const QStringList &codes) const
    {
        for (int index = 0; index < stack->count(); ++index) {
            for (int row = page(index)->rowCount() - 1; row >= 0; --row) {
                if (!codes.contains(page(index)->code(row)))
                    page(index)->removeRow(row);
            }
        }
    }

    QPointer<ParameterEditor> editor = new ParameterEditor;
    RegisterPeer peer;
    QListWidget *list = nullptr;
    QStackedWidget *stack = nullptr;
    QProgressDialog *progress = nullptr;
};

} // namespace

class ParameterEditorTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void windowHasItsParts();
    void toolBarHoldsItsActionsInOrder();
    void legendNamesTheFiveSymbols();
    void pageListNamesTheTwelveGroups();
    void clickOnTheHeadFoldsTheList();
    void selectingTheHeadKeepsThePage();
    void catalogueFillsTheTwelvePages_data();
    void catalogueFillsTheTwelvePages();
    void pageReadAsksForEveryCode_data();
    void pageReadAsksForEveryCode();
    void pageReadShowsEveryValueAndFollowsIt();
    void pageReadWhileOfflineDoesNothing();
    void progressRunsOverTheWholeRead();
    void missingReplyEndsThePageRead();
    void restOfAnEndedReadIsReadFirst();
    void unaskedReplyAfterAReadIsIgnored();
    void lateReplyDoesNotSetAnEndedReadGoing();
    void lateReplyDoesNotSetAnEndedWriteGoing();
    void exceptionReplyIsDecodedAsItStands();
    void singleReadUsesTheListForItsWidth_data();
    void singleReadUsesTheListForItsWidth();
    void singleReadTimesOut();
    void singleWriteGoesToItsBase_data();
    void singleWriteGoesToItsBase();
    void singleWriteTimesOut();
    void pageWriteWritesAndReadsBackThreeTimes();
    void pageWriteLeavesOutReadOnlyAndReserved();
    void emptyValueIsWrittenAsZero();
    void readBackThatDiffersIsAskedAgain();
    void readBackWithAnotherFunctionIsAskedAgain();
    void pageWriteResetsTheColours();
    void pageWriteWhileOfflineTimesOut();
    void missingReadBackClosesTheProgressSilently();
    void newPageWriteStartsOver();
    void timeoutInIdleSaysNothing();
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
    const Bench bench;
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
    const Bench bench;
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
    const Bench bench;
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
    const Bench bench;
    QCOMPARE(bench.list->count(), 13);
    QCOMPARE(bench.list->item(0)->text(), QStringLiteral("-KT500"));
    QCOMPARE(bench.list->item(1)->text(), QStringLiteral("  -Pn-0XX Basic parameters"));
    QCOMPARE(bench.list->item(12)->text(), QStringLiteral("  -Pn-BXX Multi-segment speed group parameters"));
}

void ParameterEditorTest::clickOnTheHeadFoldsTheList()
{
    const Bench bench;
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
    const Bench bench;
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
    const Bench bench;
    QVERIFY(bench.waitForCatalogue());
    QCOMPARE(bench.stack->currentIndex(), 0);
    for (int index = 0; index < 12; ++index) {
        QCOMPARE(bench.page(index)->rowCount(), rows.at(index));
        QCOMPARE(bench.page(index)->rowDescriptions.size(), rows.at(index));
    }
}

void ParameterEditorTest::pageReadAsksForEveryCode_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("frames");
    QTest::addColumn<QByteArray>("gear");   // the frame that reads Pn-304
    QTest::addColumn<QByteArray>("origin"); // and Pn-336
    // In the English file the hyphen pairs are read as one register, and Pn-336~Pn-337 as two.
    QTest::newRow("English") << "en_US" << 520 << wire::frame("010321300001") << wire::frame("010321500002");
    QTest::newRow("Chinese") << "zh_CN" << 571 << wire::frame("010321300002") << wire::frame("010321500001");
}

void ParameterEditorTest::pageReadAsksForEveryCode()
{
    QFETCH(QString, language);
    QFETCH(int, frames);
    QFETCH(QByteArray, gear);
    QFETCH(QByteArray, origin);
    directory.setLanguage(language);
    ModalAnswers boxes;
    const Bench bench;
    QVERIFY(bench.waitForCatalogue());
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    QCOMPARE(bench.peer.frames.size(), frames);
    QCOMPARE(bench.peer.frames.first(), wire::frame("010320000001"));
    QCOMPARE(bench.peer.frames.last(), wire::frame("010324AB0001"));
    QCOMPARE(bench.peer.frames.count(gear), 1);
    QCOMPARE(bench.peer.frames.count(origin), 1);
    QCOMPARE(bench.peer.windowNames.count(QStringLiteral("Editor")), frames);
}

void ParameterEditorTest::pageReadShowsEveryValueAndFollowsIt()
{
    directory.setLanguage(QStringLiteral("zh_CN"));
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.peer.registers[0x2007] = 1500;   // Pn-007, tenths
    bench.peer.registers[0x2003] = 0x0139; // Pn-003, hexadecimal
    bench.peer.registers[0x23EC] = 0xFFFF; // Pn-A04, 32 bits
    bench.peer.registers[0x23ED] = 0xD8F0;
    bench.peer.registers[0x20C8 + 53] = 0xFFFE; // Pn-253, signed
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    QCOMPARE(bench.value(0, QStringLiteral("Pn-007")), QStringLiteral("150.0"));
    QCOMPARE(bench.value(0, QStringLiteral("Pn-003")), QStringLiteral("0x0139"));
    QCOMPARE(bench.value(10, QStringLiteral("Pn-A04")), QStringLiteral("-10000"));
    QCOMPARE(bench.value(2, QStringLiteral("Pn-253")), QStringLiteral("-2"));
    QCOMPARE(bench.colour(0, QStringLiteral("Pn-007")), QColor(Qt::blue));
    // The view has followed the read to the last page.
    QCOMPARE(bench.list->currentRow(), 12);
    QCOMPARE(bench.stack->currentIndex(), 11);
    QVERIFY(!bench.progress->isVisible());
}

void ParameterEditorTest::pageReadWhileOfflineDoesNothing()
{
    ModalAnswers boxes;
    const Bench bench;
    QVERIFY(bench.waitForCatalogue());
    SerialPort::portOpened = false;
    bench.editor->readPageSlt();
    QVERIFY(bench.peer.frames.isEmpty());
    QVERIFY(bench.progress->isHidden());
}

void ParameterEditorTest::progressRunsOverTheWholeRead()
{
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    QList<int> values;
    QString label;
    int maximum = 0;
    bench.peer.intercept = [&](const QByteArray &, const QByteArray &usual) {
        values.append(bench.progress->value());
        label = bench.progress->labelText();
        maximum = bench.progress->maximum();
        return usual;
    };
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    QCOMPARE(label, QStringLiteral("Reading..."));
    QCOMPARE(maximum, 521);
    QCOMPARE(values.first(), 1);
    QCOMPARE(values.last(), 520);
    // The next run starts anew.
    values.clear();
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    QCOMPARE(values.first(), 1);
}

void ParameterEditorTest::missingReplyEndsThePageRead()
{
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    const QByteArray silentAt = wire::frame("010320090001");
    bench.peer.intercept = [&silentAt](const QByteArray &request, const QByteArray &usual) {
        return request == silentAt ? QByteArray() : usual;
    };
    boxes.expect(requestTimeout);
    bench.editor->readPageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.last(), silentAt);
    QCOMPARE(bench.peer.frames.size(), 10);
    QVERIFY(bench.progress->isHidden());
}

void ParameterEditorTest::restOfAnEndedReadIsReadFirst()
{
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    const QByteArray silentAt = wire::frame("010320090001");
    bool silent = true;
    bench.peer.intercept = [&silentAt, &silent](const QByteArray &request, const QByteArray &usual) {
        return silent && request == silentAt ? QByteArray() : usual;
    };
    boxes.expect(requestTimeout);
    bench.editor->readPageSlt();
    QTRY_VERIFY(boxes.isDone());
    silent = false;
    bench.peer.frames.clear();
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    // 511 codes were left, and the whole list stands behind them.
    QCOMPARE(bench.peer.frames.size(), 511 + 520);
    QCOMPARE(bench.peer.frames.first(), silentAt);
    QCOMPARE(bench.peer.frames.at(511), wire::frame("010320000001"));
}

void ParameterEditorTest::unaskedReplyAfterAReadIsIgnored()
{
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    const QString before = bench.value(11, QStringLiteral("Pn-B95"));
    // The reply to a restarted link's probe comes to the window that asked last.
    bench.editor->handleBaseParameter(wire::frame("01030411223344"));
    QCOMPARE(bench.value(11, QStringLiteral("Pn-B95")), before);
}

void ParameterEditorTest::lateReplyDoesNotSetAnEndedReadGoing()
{
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.peer.held = true;
    boxes.expect(requestTimeout);
    bench.editor->readPageSlt();
    QTRY_VERIFY(boxes.isDone());
    const QString before = bench.value(0, QStringLiteral("Pn-000"));
    QSignalSpy replies(&bench.peer, &RegisterPeer::reply);
    bench.peer.release();
    QTRY_COMPARE(replies.count(), 1);
    QCOMPARE(bench.peer.frames.size(), 1);
    QCOMPARE(bench.value(0, QStringLiteral("Pn-000")), before);
    QVERIFY(bench.progress->isHidden());
}

void ParameterEditorTest::lateReplyDoesNotSetAnEndedWriteGoing()
{
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.peer.held = true;
    boxes.expect(writeTimeout);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QSignalSpy replies(&bench.peer, &RegisterPeer::reply);
    bench.peer.release();
    QTRY_COMPARE(replies.count(), 1);
    QCOMPARE(bench.peer.frames.size(), 1);
}

void ParameterEditorTest::exceptionReplyIsDecodedAsItStands()
{
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.peer.intercept = [](const QByteArray &, const QByteArray &) { return wire::bytes("018302C0F1"); };
    bench.editor->readCurrentParameter({QStringLiteral("Pn-100")});
    QTRY_COMPARE(bench.value(1, QStringLiteral("Pn-100")), QStringLiteral("33538"));
}

void ParameterEditorTest::singleReadUsesTheListForItsWidth_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("Pn-007") << "Pn-007" << wire::frame("010320070001");
    QTest::newRow("Pn-304") << "Pn-304" << wire::frame("010321300002");
    QTest::newRow("Pn-336") << "Pn-336" << wire::frame("010321500001");
    QTest::newRow("Pn-B06") << "Pn-B06" << wire::frame("010324520002");
}

void ParameterEditorTest::singleReadUsesTheListForItsWidth()
{
    QFETCH(QString, code);
    QFETCH(QByteArray, frame);
    ModalAnswers boxes;
    const Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.editor->readCurrentParameter({code});
    QCOMPARE(bench.peer.frames, QList<QByteArray>({frame}));
    QVERIFY(bench.progress->isHidden());
    const int page = code.midRef(3, 1).toInt(nullptr, 16);
    QTRY_VERIFY(bench.value(page, code) == QLatin1String("0") ||
                bench.value(page, code) == QLatin1String("0.0"));
    QCOMPARE(bench.list->currentRow(), 1);
}

void ParameterEditorTest::singleReadTimesOut()
{
    ModalAnswers boxes;
    Bench bench;
    bench.peer.held = true;
    boxes.expect(requestTimeout);
    bench.editor->readCurrentParameter({QStringLiteral("Pn-007")});
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.size(), 1);
}

void ParameterEditorTest::singleWriteGoesToItsBase_data()
{
    QTest::addColumn<bool>("toRam");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("RAM") << true << wire::frame("01102007000102 05DC");
    QTest::newRow("EEPROM") << false << wire::frame("0110E007000102 05DC");
}

void ParameterEditorTest::singleWriteGoesToItsBase()
{
    QFETCH(bool, toRam);
    QFETCH(QByteArray, frame);
    ModalAnswers boxes;
    Bench bench;
    bench.editor->writeCurrentParameterToServo({"Pn-007", "", "150.0", "0.1rpm", "0.0", "6000.0"}, toRam);
    QCOMPARE(bench.peer.frames, QList<QByteArray>({frame}));
    QTRY_COMPARE(bench.peer.registers.value(0x2007), quint16(1500));
    // No read-back and no message follow.
    QSignalSpy replies(&bench.peer, &RegisterPeer::reply);
    QTRY_COMPARE(replies.count(), 1);
    QCOMPARE(bench.peer.frames.size(), 1);
}

void ParameterEditorTest::singleWriteTimesOut()
{
    ModalAnswers boxes;
    Bench bench;
    bench.peer.held = true;
    boxes.expect(writeTimeout);
    bench.editor->writeCurrentParameterToServo({"Pn-007", "", "150.0", "0.1rpm", "0.0", "6000.0"}, true);
    QTRY_VERIFY(boxes.isDone());
}

void ParameterEditorTest::pageWriteWritesAndReadsBackThreeTimes()
{
    ModalAnswers boxes;
    const Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007", "Pn-A04"});
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    const QByteArray readJog = wire::frame("010320070001");
    const QByteArray readPath = wire::frame("010323EC0002");
    QCOMPARE(bench.peer.frames,
             QList<QByteArray>({wire::frame("0110E007000102 07D0"), readJog, readJog, readJog,
                                wire::frame("0110E3EC000204 00002710"), readPath, readPath, readPath}));
    QVERIFY(bench.progress->isHidden());
}

void ParameterEditorTest::pageWriteLeavesOutReadOnlyAndReserved()
{
    ModalAnswers boxes;
    const Bench bench;
    QVERIFY(bench.waitForCatalogue());
    // Read-only, reserved, and a row whose spelling is not recognised.
    bench.keepOnly({"Pn-000", "Pn-002", "Pn-340"});
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.size(), 4);
    QCOMPARE(bench.peer.frames.first().left(7), wire::bytes("0110E154000204"));
}

void ParameterEditorTest::emptyValueIsWrittenAsZero()
{
    ModalAnswers boxes;
    const Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    bench.page(0)->item(0, ParameterTable::ValueColumn)->setText(QString());
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.first(), wire::frame("0110E007000102 0000"));
}

void ParameterEditorTest::readBackThatDiffersIsAskedAgain()
{
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    const QByteArray read = wire::frame("010320070001");
    int reads = 0;
    bench.peer.intercept = [&read, &reads](const QByteArray &request, const QByteArray &usual) {
        // The matches need not follow one another.
        if (request == read && (++reads == 2 || reads == 3))
            return wire::frame("0103020001");
        return usual;
    };
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.count(read), 5);
    QCOMPARE(bench.peer.frames.size(), 6);
}

void ParameterEditorTest::readBackWithAnotherFunctionIsAskedAgain()
{
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    const QByteArray read = wire::frame("010320070001");
    int reads = 0;
    bench.peer.intercept = [&read, &reads](const QByteArray &request, const QByteArray &usual) {
        return request == read && ++reads <= 2 ? wire::frame("01830207D0") : usual;
    };
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.count(read), 5);
}

void ParameterEditorTest::pageWriteResetsTheColours()
{
    ModalAnswers boxes;
    const Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007", "Pn-000"});
    bench.page(0)->item(0, ParameterTable::ValueColumn)->setForeground(Qt::blue);
    bench.page(0)->item(1, ParameterTable::ValueColumn)->setForeground(Qt::red);
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.colour(0, QStringLiteral("Pn-000")), QColor(Qt::black));
    QCOMPARE(bench.colour(0, QStringLiteral("Pn-007")), QColor(Qt::black));
}

void ParameterEditorTest::pageWriteWhileOfflineTimesOut()
{
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    SerialPort::portOpened = false;
    bench.peer.held = true;
    boxes.expect(writeTimeout);
    bench.editor->writePageSlt();
    QVERIFY(bench.progress->isVisible());
    QCOMPARE(bench.progress->labelText(), QStringLiteral("Writing..."));
    QTRY_VERIFY(boxes.isDone());
    QVERIFY(bench.progress->isHidden());
    QCOMPARE(bench.peer.frames.size(), 1);
}

void ParameterEditorTest::missingReadBackClosesTheProgressSilently()
{
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    const QByteArray read = wire::frame("010320070001");
    bench.peer.intercept = [&read](const QByteArray &request, const QByteArray &usual) {
        return request == read ? QByteArray() : usual;
    };
    bench.editor->writePageSlt();
    QTRY_COMPARE(bench.peer.frames.size(), 2);
    QVERIFY(bench.progress->isVisible());
    QTRY_VERIFY(bench.progress->isHidden());
    QVERIFY(boxes.seen.isEmpty());
}

void ParameterEditorTest::newPageWriteStartsOver()
{
    ModalAnswers boxes;
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007", "Pn-A04"});
    bench.peer.held = true;
    boxes.expect(writeTimeout);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    bench.peer.held = false;
    bench.peer.frames.clear();
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.size(), 8);
}

void ParameterEditorTest::timeoutInIdleSaysNothing()
{
    ModalAnswers boxes;
    const Bench bench;
    bench.editor->readWriteTimeout();
    QVERIFY(boxes.seen.isEmpty());
}

void ParameterEditorTest::closingKeepsTheSplitter()
{
    QByteArray state;
    {
        const Bench bench;
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
    const Bench bench;
    bench.editor->show();
    QCOMPARE(bench.editor->findChild<QSplitter *>()->saveState(), state);
}

void ParameterEditorTest::brokenSplitterStateIsIgnored()
{
    {
        QSettings settings(QStringLiteral("settings.ini"), QSettings::IniFormat);
        settings.setValue(QStringLiteral("splitterSizes/splitterSizes"), QStringLiteral("no state"));
    }
    const Bench bench;
    bench.editor->show();
    const QList<int> sizes = bench.editor->findChild<QSplitter *>()->sizes();
    QCOMPARE(sizes.size(), 2);
    QVERIFY(sizes.at(1) > 0);
}

void ParameterEditorTest::closingDuringAReadIsSafe()
{
    ModalAnswers boxes;
    Bench bench;
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
    const Bench bench;
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
