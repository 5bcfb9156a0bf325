// SPDX-License-Identifier: GPL-3.0-or-later
// What a set-up of the drive goes through: one value tried out and kept, and all values carried by a file.
#include "link/serialport.h"
#include "parameter/parametereditor.h"
#include "parameter/parametersettinghelper.h"
#include "parameter/parametertable.h"
#include "shell/mainwindow.h"
#include "support/editordriver.h"
#include "support/filedialoganswers.h"
#include "support/modalanswers.h"
#include "support/rununtil.h"
#include "support/signallog.h"
#include "support/workplace.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QFile>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>

namespace {

using kt500sim::RegisterCopy;

constexpr int pageCount = 12;
const QString fileName = QStringLiteral("machine-3.scp");

struct Words
{
    QString readingDone;
    QString writingDone;
    QString saveTitle;
    QString openTitle;
};

Words wordsOf(const QString &language)
{
    if (language == QLatin1String("zh_CN"))
        return {QStringLiteral("参数读取完成"), QStringLiteral("参数写入完成"), QStringLiteral("保存scp文件"),
                QStringLiteral("打开scp文件")};
    return {QStringLiteral("Parameters reading completed"), QStringLiteral("Parameters writing completed"),
            QStringLiteral("Save scp file"), QStringLiteral("open scp file")};
}

// Chooses the entry of a row's menu: 1 reads the row, 2 stores it.
void chooseInMenu(const ParameterEditor *editor, int index, const QString &code, int entry)
{
    const QPoint place = EditorDriver(editor).showValue(index, code);
    QWidget *const viewport = EditorDriver(editor).page(index)->viewport();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
    QCoreApplication::sendEvent(viewport, &event);
    QWidget *const menu = QApplication::activePopupWidget();
    for (int i = 0; i < entry; ++i)
        QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
}

void clickButton(const ParameterSettingHelper *helper, const char *name)
{
    QTest::mouseClick(helper->findChild<QPushButton *>(QLatin1String(name)), Qt::LeftButton);
}

// Answers to the editor, counted when it has had them: a request made while the one before is unanswered is
// not what a person can do.
SignalLog<QByteArray> answersOf(const Workplace &place)
{
    return {place.window()->findChild<SerialPort *>(), &SerialPort::handleBaseParameter};
}

// Register of a code by hand: a hexadecimal digit for the group, two decimal digits for the number.
int offsetOf(const QString &code)
{
    return QStringLiteral("0123456789AB").indexOf(code.at(3)) * 100 + code.midRef(4, 2).toInt();
}

QString codeOf(int offset)
{
    return QStringLiteral("Pn-%1%2")
        .arg(QStringLiteral("0123456789AB").at(offset / 100))
        .arg(offset % 100, 2, 10, QLatin1Char('0'));
}

// What stands in one register or two, high word first.
quint32 numberAt(const kt500sim::RegisterFile::Words &words, const kt500sim::RegisterEntry &entry)
{
    const auto at = std::size_t(entry.offset);
    return entry.words == 2 ? quint32(words.at(at) << 16) | words.at(at + 1) : words.at(at);
}

bool isPair(const kt500sim::RegisterTable &table, int offset)
{
    return std::any_of(table.begin(), table.end(),
                       [offset](const auto &entry) { return entry.offset == offset && entry.words == 2; });
}

// A shown value is the register's number with a point in it, or its hexadecimal digits.
qint64 rawNumber(QString text)
{
    if (text.startsWith(QLatin1String("0x")))
        return text.toLongLong(nullptr, 16);
    return text.remove(QLatin1Char('.')).toLongLong();
}

// Texts of a .scp file, page by page.
QList<QStringList> valuesInFile(const QString &name)
{
    QList<QStringList> pages;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return pages;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (int i = 0; i + 1 < lines.size(); ++i) { // behind the last line end stands nothing
        const QString text = QString::fromLocal8Bit(QByteArray::fromBase64(lines.at(i).trimmed()));
        if (text.startsWith(QLatin1String("Pn-")))
            pages.append(QStringList());
        else
            pages.last().append(text);
    }
    return pages;
}

bool isWritten(const ParameterTable *page, int row, const QString &reservedWord)
{
    return page->text(row, ParameterTable::ReadOnlyColumn).isEmpty() &&
           page->text(row, ParameterTable::DescriptionColumn) != reservedWord;
}

// Gives every register that the editor writes another value than the factory's, in both copies: a set-up as a
// machine has it. The values stay below the limits of their rows, leading digits of which are the same number
// whatever their point.
int setUpMachine(const Workplace &place, const ParameterEditor *editor, const QString &reservedWord)
{
    const kt500sim::RegisterTable table = kt500sim::builtInRegisterTable();
    int count = 0;
    for (int index = 0; index < pageCount; ++index) {
        const ParameterTable *const page = EditorDriver(editor).page(index);
        for (int row = 0; row < page->rowCount(); ++row) {
            const int offset = offsetOf(page->code(row));
            const auto entry = std::find_if(table.begin(), table.end(),
                                            [offset](const auto &e) { return e.offset == offset; });
            if (!isWritten(page, row, reservedWord) || entry == table.end() || entry->readOnly)
                continue;
            const auto limit = rawNumber(page->text(row, ParameterTable::MaxColumn).section('.', 0, 0));
            const bool isSigned = page->text(row, ParameterTable::MinColumn).startsWith(QLatin1Char('-'));
            qint64 value = (offset * 7919 + 13) % (qBound<qint64>(1, limit, 1'000'000) + 1);
            if (value == entry->factory)
                value = value > 0 ? value - 1 : 1;
            if (isSigned && offset % 2)
                value = -value;
            if (entry->words == 2)
                place.drive->writePair(offset, qint32(value), RegisterCopy::Stored);
            else
                place.drive->writeRegister(offset, quint16(value), RegisterCopy::Stored);
            ++count;
        }
    }
    return count;
}

} // namespace

class ParameterSetupEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void valueIsTriedInRamAndThenKept_data();
    void valueIsTriedInRamAndThenKept();
    void choiceOfAFormIsTriedInRamAndThenKept();
    void driveFromTheFactoryShowsTheDefaults_data();
    void driveFromTheFactoryShowsTheDefaults();
    void setUpReturnsToAResetDriveFromItsFile_data();
    void setUpReturnsToAResetDriveFromItsFile();
};

void ParameterSetupEndToEndTest::valueIsTriedInRamAndThenKept_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "en_US";
    QTest::newRow("Chinese") << "zh_CN";
}

void ParameterSetupEndToEndTest::valueIsTriedInRamAndThenKept()
{
    QFETCH(QString, language);
    const QString code = QStringLiteral("Pn-007");
    ModalAnswers boxes;
    Workplace place(language);
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, QStringLiteral("115200(485)"));
    QVERIFY(editor);
    const quint16 factory = *place.drive->readRegister(7);
    QVERIFY(factory != 1234);
    const auto answers = answersOf(place);

    // To working memory: red, and the drive's memory keeps what it had.
    const ParameterSettingHelper *const helper = EditorDriver(editor).openHelper(0, code);
    QVERIFY(helper);
    helper->findChild<QLineEdit *>(QStringLiteral("valueEdit"))->setText(QStringLiteral("123.4"));
    clickButton(helper, "okButton");
    QTRY_COMPARE(answers.count(), 1);
    QCOMPARE(*place.drive->readRegister(7), quint16(1234));
    QCOMPARE(*place.drive->readRegister(7, RegisterCopy::Stored), factory);
    QCOMPARE(EditorDriver(editor).value(0, code), QStringLiteral("123.4"));
    QCOMPARE(EditorDriver(editor).colour(0, code), QColor(Qt::red));

    // Read back: the text on the screen is the drive's answer.
    EditorDriver(editor).setValue(0, code, QStringLiteral("unread"));
    chooseInMenu(editor, 0, code, 1);
    QTRY_COMPARE(EditorDriver(editor).value(0, code), QStringLiteral("123.4"));

    // Kept: black, and in both copies.
    chooseInMenu(editor, 0, code, 2);
    QTRY_COMPARE(answers.count(), 3);
    QCOMPARE(*place.drive->readRegister(7, RegisterCopy::Stored), quint16(1234));
    QCOMPARE(EditorDriver(editor).colour(0, code), QColor(Qt::black));

    place.drive->powerCycle();
    EditorDriver(editor).setValue(0, code, QStringLiteral("unread"));
    chooseInMenu(editor, 0, code, 1);
    QTRY_COMPARE(EditorDriver(editor).value(0, code), QStringLiteral("123.4"));
    QCOMPARE(*place.drive->readRegister(7), quint16(1234));
}

void ParameterSetupEndToEndTest::choiceOfAFormIsTriedInRamAndThenKept()
{
    const QString code = QStringLiteral("Pn-004");
    ModalAnswers boxes;
    Workplace place;
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, QStringLiteral("USB"));
    QVERIFY(editor);

    const auto answers = answersOf(place);
    const ParameterSettingHelper *helper = EditorDriver(editor).openHelper(0, code);
    QVERIFY(helper);
    auto *const hundreds = helper->findChild<QComboBox *>(QStringLiteral("Pn-004hundreds"));
    QVERIFY(hundreds);
    QTest::keyClick(hundreds, Qt::Key_Down);
    clickButton(helper, "okButton");
    QTRY_COMPARE(answers.count(), 1);
    QCOMPARE(*place.drive->readRegister(4), quint16(0x0100));
    QCOMPARE(*place.drive->readRegister(4, RegisterCopy::Stored), quint16(0));
    QCOMPARE(EditorDriver(editor).colour(0, code), QColor(Qt::red));

    // A choice that the power took away, made again and kept by the other button.
    place.drive->powerCycle();
    chooseInMenu(editor, 0, code, 1);
    QTRY_COMPARE(EditorDriver(editor).value(0, code), QStringLiteral("0x0000"));
    helper = EditorDriver(editor).openHelper(0, code);
    QVERIFY(helper);
    QTest::keyClick(helper->findChild<QComboBox *>(QStringLiteral("Pn-004hundreds")), Qt::Key_Down);
    clickButton(helper, "writeButton");
    QTRY_COMPARE(answers.count(), 3);
    QCOMPARE(*place.drive->readRegister(4, RegisterCopy::Stored), quint16(0x0100));
    QCOMPARE(EditorDriver(editor).value(0, code), QStringLiteral("0x0100"));
    QCOMPARE(EditorDriver(editor).colour(0, code), QColor(Qt::black));
    place.drive->powerCycle();
    QCOMPARE(*place.drive->readRegister(4), quint16(0x0100));
}

void ParameterSetupEndToEndTest::driveFromTheFactoryShowsTheDefaults_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("others"); // how their codes start
    // Its default is written with one digit behind the point.
    const QStringList both{"Pn-638"};
    QTest::newRow("Chinese") << "zh_CN" << both;
    // The drive is that of the Chinese catalogue: the English one has other parameters in group 3, and reads
    // the high word of a pair alone where it writes no tilde.
    QTest::newRow("English") << "en_US" << both + QStringList{"Pn-3", "Pn-401"};
}

void ParameterSetupEndToEndTest::driveFromTheFactoryShowsTheDefaults()
{
    QFETCH(QString, language);
    QFETCH(QStringList, others);
    ModalAnswers boxes;
    Workplace place(language);
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, QStringLiteral("USB"));
    QVERIFY(editor);
    for (int index = 0; index < pageCount; ++index) {
        const ParameterTable *const page = EditorDriver(editor).page(index);
        for (int row = 0; row < page->rowCount(); ++row)
            page->item(row, ParameterTable::ValueColumn)->setText(QStringLiteral("unread"));
    }
    boxes.expect(wordsOf(language).readingDone);
    Workplace::clickAction(editor, "readAction");
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 30000));

    int compared = 0;
    for (int index = 0; index < pageCount; ++index) {
        const ParameterTable *const page = EditorDriver(editor).page(index);
        for (int row = 0; row < page->rowCount(); ++row) {
            const QString byDefault = page->text(row, ParameterTable::DefaultColumn);
            // A mistyped code of the English catalogue is read as a row of another page.
            const bool isOfThisPage = offsetOf(page->code(row)) / 100 == index;
            const bool isOther = std::any_of(others.begin(), others.end(), [&](const QString &start) {
                return page->code(row).startsWith(start);
            });
            if (byDefault.isEmpty() || !isOfThisPage || isOther)
                continue;
            ++compared;
            QVERIFY2(page->text(row, ParameterTable::ValueColumn) == byDefault, qPrintable(page->code(row)));
            QVERIFY2(page->item(row, ParameterTable::ValueColumn)->foreground().color() != QColor(Qt::blue),
                     qPrintable(page->code(row)));
        }
    }
    QVERIFY(compared > 400);
}

void ParameterSetupEndToEndTest::setUpReturnsToAResetDriveFromItsFile_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("reserved");
    QTest::addColumn<QStringList>("readInAnotherWidth");
    // The English catalogue writes these pairs without a tilde, and a page read takes one register for them,
    // or with one, where a write takes one: the file holds what was read, and so does the drive afterwards.
    QTest::newRow("English") << "en_US"
                             << "Reserved"
                             << QStringList{"Pn-304", "Pn-306", "Pn-308", "Pn-310", "Pn-312", "Pn-314",
                                            "Pn-322", "Pn-327", "Pn-336", "Pn-340", "Pn-401"};
    QTest::newRow("Chinese") << "zh_CN"
                             << "保留" << QStringList();
}

void ParameterSetupEndToEndTest::setUpReturnsToAResetDriveFromItsFile()
{
    QFETCH(QString, language);
    QFETCH(QString, reserved);
    QFETCH(QStringList, readInAnotherWidth);
    const Words words = wordsOf(language);
    ModalAnswers boxes;
    FileDialogAnswers dialogs;
    Workplace place(language);
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, QStringLiteral("USB"));
    QVERIFY(editor);
    const int setUp = setUpMachine(place, editor, reserved);
    QVERIFY(setUp > 300);
    const kt500sim::RegisterSnapshot machine = place.drive->registers();

    boxes.expect(words.readingDone);
    Workplace::clickAction(editor, "readAction");
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 30000));
    dialogs.expect(words.saveTitle, fileName);
    Workplace::clickAction(editor, "saveAction");
    QVERIFY(dialogs.isDone());

    place.drive->factoryReset();
    QVERIFY(place.drive->registers().working != machine.working);
    for (int index = 0; index < pageCount; ++index) {
        const ParameterTable *const page = EditorDriver(editor).page(index);
        for (int row = 0; row < page->rowCount(); ++row)
            page->item(row, ParameterTable::ValueColumn)->setText(QString());
    }
    dialogs.expect(words.openTitle, fileName);
    Workplace::clickAction(editor, "openAction");
    QVERIFY(dialogs.isDone());
    boxes.expect(words.writingDone);
    Workplace::clickAction(editor, "writeAction");
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 60000));

    const QList<QStringList> file = valuesInFile(fileName);
    QCOMPARE(file.size(), pageCount);
    const kt500sim::RegisterSnapshot now = place.drive->registers();
    const kt500sim::RegisterTable table = kt500sim::builtInRegisterTable();
    QMap<int, quint16> fromFile; // what the file's rows leave in each register, one after the other
    for (int index = 0; index < pageCount; ++index) {
        const ParameterTable *const page = EditorDriver(editor).page(index);
        QCOMPARE(file.at(index).size(), page->rowCount());
        for (int row = 0; row < page->rowCount(); ++row) {
            const int offset = offsetOf(page->code(row));
            if (!isWritten(page, row, reserved))
                continue;
            const auto number = quint32(rawNumber(file.at(index).at(row)));
            if (isPair(table, offset))
                fromFile.insert(offset, quint16(number >> 16));
            fromFile.insert(offset + (isPair(table, offset) ? 1 : 0), quint16(number));
        }
    }
    QVERIFY(fromFile.size() >= setUp);
    for (auto it = fromFile.cbegin(); it != fromFile.cend(); ++it) {
        const auto at = std::size_t(it.key());
        QVERIFY2(now.working.at(at) == it.value(), qPrintable(codeOf(it.key())));
        QVERIFY2(now.stored.at(at) == it.value(), qPrintable(codeOf(it.key())));
    }
    for (const kt500sim::RegisterEntry &entry : table) {
        // What the drive alone writes, its record and its hours, goes on by itself.
        if (entry.offset >= kt500sim::statusStart || entry.readOnly)
            continue;
        const QString code = codeOf(entry.offset);
        if (!readInAnotherWidth.contains(code))
            QVERIFY2(numberAt(now.working, entry) == numberAt(machine.working, entry), qPrintable(code));
    }
}

QTEST_MAIN(ParameterSetupEndToEndTest)
#include "tst_parametersetup_endtoend.moc"
