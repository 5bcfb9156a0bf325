// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's parameter files, saved, exported and opened again.
#include "editorfiles.h"

#include "parameter/loadededitor.h"
#include "support/editortexts.h"
#include "support/filedialoganswers.h"
#include "support/modalanswers.h"
#include "support/wire.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QTranslator>

using namespace editorfiles;
using namespace testfiles;

namespace {

const QString scpFilter = QStringLiteral("Parameter File(*.scp)");
const QString csvFilter = QStringLiteral("CSV File(*.csv)");

class MarkingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "ParameterTable") == 0 ? QStringLiteral("zh:") + QString::fromUtf8(source)
                                                       : QString();
    }
};

} // namespace

class ParameterEditorFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void saveDialogOffersBothFormats();
    void openDialogOffersTheFormatThatIsReadBack();
    void dialogsStartWithoutAPath();
    void cancelledDialogsDoNothing();
    void savedFileHoldsEveryPageInOrder_data() { languages(); }
    void savedFileHoldsEveryPageInOrder();
    void savingAndOpeningRestoresEveryValue_data() { languages(); }
    void savingAndOpeningRestoresEveryValue();
    void openingTouchesNoColourAndNoOtherColumn();
    void nameDecidesTheFormat_data();
    void nameDecidesTheFormat();
    void nameWithoutAFormatEmptiesTheFileThatWasThere();
    void exportHoldsTheWholeTables_data() { languages(); }
    void exportHoldsTheWholeTables();
    void exportHasTheHeadsOfTheInterface();
    void openedValuesAreWhatAPageWriteSends();
    void nothingGoesToTheDriveByItself();

private:
    static void languages();
};

void ParameterEditorFilesTest::languages()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << QStringLiteral("en_US");
    QTest::newRow("Chinese") << QStringLiteral("zh_CN");
}

void ParameterEditorFilesTest::saveDialogOffersBothFormats()
{
    const LoadedEditor loaded;
    FileDialogAnswers dialogs;
    dialogs.expectCancelled(saveTitle);
    loaded.editor->findChild<QAction *>(QStringLiteral("saveAction"))->trigger();
    QCOMPARE(dialogs.seen.size(), 1);
    QCOMPARE(dialogs.seen.first().filters, (QStringList{scpFilter, csvFilter}));
    QCOMPARE(dialogs.seen.first().acceptMode, QFileDialog::AcceptSave);
}

void ParameterEditorFilesTest::openDialogOffersTheFormatThatIsReadBack()
{
    const LoadedEditor loaded;
    FileDialogAnswers dialogs;
    dialogs.expectCancelled(openTitle);
    loaded.editor->findChild<QAction *>(QStringLiteral("openAction"))->trigger();
    QCOMPARE(dialogs.seen.size(), 1);
    QCOMPARE(dialogs.seen.first().filters, QStringList{scpFilter});
    QCOMPARE(dialogs.seen.first().acceptMode, QFileDialog::AcceptOpen);
    QCOMPARE(dialogs.seen.first().fileMode, QFileDialog::ExistingFile);
}

// Without a path a dialog starts in the folder that was looked at last, with no name in its line.
void ParameterEditorFilesTest::dialogsStartWithoutAPath()
{
    const LoadedEditor loaded;
    QVERIFY(QDir().mkdir(QStringLiteral("elsewhere")));
    const QString elsewhere = QFileInfo(QStringLiteral("elsewhere")).absoluteFilePath();
    FileDialogAnswers dialogs;
    QFileDialog().setDirectory(elsewhere);
    dialogs.expectCancelled(saveTitle);
    dialogs.expectCancelled(openTitle);
    dialogs.expectCancelled(QStringLiteral("Save csv file"));
    dialogs.expectCancelled(QStringLiteral("open csv file"));
    loaded.editor->saveParameters();
    loaded.editor->openExistParameter();
    loaded.editor->saveCsvSlot();
    loaded.editor->openCsvSlot();
    QCOMPARE(dialogs.seen.size(), 4);
    for (const FileDialogAnswers::Seen &dialog : qAsConst(dialogs.seen)) {
        QCOMPARE(dialog.directory, elsewhere);
        QCOMPARE(dialog.name, QString());
    }
}

void ParameterEditorFilesTest::cancelledDialogsDoNothing()
{
    const LoadedEditor loaded;
    const ModalAnswers noBox;
    const QList<QStringList> before = valuesOf(loaded);
    const QStringList filesBefore = QDir(loaded.directory.path()).entryList(QDir::Files);
    FileDialogAnswers dialogs;
    dialogs.expectCancelled(saveTitle);
    dialogs.expectCancelled(openTitle);
    loaded.editor->saveParameters();
    loaded.editor->openExistParameter();
    QCOMPARE(valuesOf(loaded), before);
    QCOMPARE(QDir(loaded.directory.path()).entryList(QDir::Files), filesBefore);
}

void ParameterEditorFilesTest::savedFileHoldsEveryPageInOrder()
{
    QFETCH(QString, language);
    const LoadedEditor loaded(language);
    const ModalAnswers noBox;
    loaded.value(0, 0)->setText(QStringLiteral("100.0"));
    loaded.value(0, 1)->setText(QString());
    save(loaded, QStringLiteral("set-up.scp"));

    const QByteArray file = contentOf(QStringLiteral("set-up.scp"));
    // Pn-000, 100.0 and an empty value.
    QVERIFY(file.startsWith("UG4tMDAw\r\nMTAwLjA=\r\n\r\n"));
    QVERIFY(file.endsWith("\r\n"));
    QVERIFY(file.contains("\r\nUG4tQTAw\r\n")); // Pn-A00
    QCOMPARE(file.count('\n'), file.count("\r\n"));

    QList<QByteArray> lines = file.split('\n');
    QCOMPARE(lines.takeLast(), QByteArray());
    for (int page = 0; page < 12; ++page) {
        const QString head = QStringLiteral("Pn-%1").arg(QStringLiteral("0123456789AB").at(page));
        QVERIFY(QByteArray::fromBase64(lines.takeFirst()).startsWith(head.toLatin1()));
        for (int row = 0; row < loaded.pages.at(page)->rowCount(); ++row)
            QCOMPARE(QByteArray::fromBase64(lines.takeFirst()), loaded.value(page, row)->text().toUtf8());
    }
    QVERIFY(lines.isEmpty());
}

void ParameterEditorFilesTest::savingAndOpeningRestoresEveryValue()
{
    QFETCH(QString, language);
    const LoadedEditor loaded(language);
    const ModalAnswers noBox;
    // Each its own, every seventh empty.
    for (int page = 0; page < 12; ++page) {
        for (int row = 0; row < loaded.pages.at(page)->rowCount(); ++row)
            loaded.value(page, row)->setText(row % 7 == 3 ? QString()
                                                          : QStringLiteral("-%1.%2").arg(page).arg(row));
    }
    const QList<QStringList> before = valuesOf(loaded);
    save(loaded, QStringLiteral("set-up.scp"));
    setAllValues(loaded, QStringLiteral("other"));
    open(loaded, QStringLiteral("set-up.scp"));
    QCOMPARE(valuesOf(loaded), before);
}

void ParameterEditorFilesTest::openingTouchesNoColourAndNoOtherColumn()
{
    const LoadedEditor loaded;
    const ModalAnswers noBox;
    save(loaded, QStringLiteral("set-up.scp"));
    loaded.value(0, 2)->setForeground(Qt::red);
    loaded.value(0, 3)->setForeground(Qt::blue);
    loaded.value(0, 3)->setText(QStringLiteral("other"));
    QStringList others;
    for (int column = 0; column < 11; ++column)
        others.append(loaded.pages.at(0)->item(3, column)->text());
    others[ParameterTable::ValueColumn] = QString();
    open(loaded, QStringLiteral("set-up.scp"));
    QCOMPARE(loaded.value(0, 2)->foreground().color(), QColor(Qt::red));
    QCOMPARE(loaded.value(0, 3)->foreground().color(), QColor(Qt::blue));
    QVERIFY(loaded.value(0, 3)->text() != QStringLiteral("other"));
    for (int column = 0; column < 11; ++column) {
        if (column != ParameterTable::ValueColumn)
            QCOMPARE(loaded.pages.at(0)->item(3, column)->text(), others.at(column));
    }
}

void ParameterEditorFilesTest::nameDecidesTheFormat_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QByteArray>("start");
    const QByteArray scp("UG4tMDAw\r\n");
    const QByteArray csv(",\xE2\x98\x85,");
    QTest::newRow("scp") << "a.scp" << scpFilter << scp;
    QTest::newRow("SCP") << "a.SCP" << scpFilter << scp;
    QTest::newRow("csv") << "a.csv" << csvFilter << csv;
    QTest::newRow("Csv") << "a.Csv" << csvFilter << csv;
    QTest::newRow("scp in the other filter") << "a.scp" << csvFilter << scp;
    QTest::newRow("csv in the other filter") << "a.csv" << scpFilter << csv;
    QTest::newRow("both") << "a.csv.scp" << scpFilter << scp;
    QTest::newRow("none") << "a" << scpFilter << QByteArray();
    QTest::newRow("another") << "a.txt" << scpFilter << QByteArray();
    QTest::newRow("scp without a point") << "scp" << scpFilter << QByteArray();
}

void ParameterEditorFilesTest::nameDecidesTheFormat()
{
    QFETCH(QString, name);
    QFETCH(QString, filter);
    QFETCH(QByteArray, start);
    const LoadedEditor loaded;
    const ModalAnswers noBox;
    FileDialogAnswers dialogs;
    dialogs.expect(saveTitle, name, filter);
    loaded.editor->saveParameters();
    QVERIFY(QFile::exists(name));
    const QByteArray file = contentOf(name);
    if (start.isEmpty())
        QCOMPARE(file, QByteArray());
    else
        QCOMPARE(file.left(start.size()), start);
}

void ParameterEditorFilesTest::nameWithoutAFormatEmptiesTheFileThatWasThere()
{
    const LoadedEditor loaded;
    put(QStringLiteral("a"), "old");
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("a already exists.\nDo you want to replace it?"), QMessageBox::Yes);
    save(loaded, QStringLiteral("a"));
    QCOMPARE(contentOf(QStringLiteral("a")), QByteArray());
}

void ParameterEditorFilesTest::exportHoldsTheWholeTables()
{
    QFETCH(QString, language);
    const LoadedEditor loaded(language);
    const ModalAnswers noBox;
    save(loaded, QStringLiteral("all.csv"));
    const QByteArray file = contentOf(QStringLiteral("all.csv"));

    const QByteArray head = ",\xE2\x98\x85,\xE2\x96\xA0,\xE2\x97\x8F,\xE2\x96\xB2,H,"
                            "Value,Uint,Min,Max,Default,Description,";
    QList<QByteArray> lines = file.split('\n');
    QCOMPARE(lines.takeLast(), QByteArray());
    for (int page = 0; page < 12; ++page) {
        if (page > 0)
            QCOMPARE(lines.takeFirst(), QByteArray("\r"));
        QCOMPARE(lines.takeFirst(), head);
        for (int row = 0; row < loaded.pages.at(page)->rowCount(); ++row) {
            QByteArray line = loaded.pages.at(page)->verticalHeaderItem(row)->text().toUtf8() + ',';
            for (int column = 0; column < 11; ++column)
                line += loaded.pages.at(page)->item(row, column)->text().toUtf8() + ',';
            QCOMPARE(lines.takeFirst(), line);
        }
    }
    QVERIFY(lines.isEmpty());
    if (language == QLatin1String("en_US"))
        QVERIFY(file.contains("\nPn-007,,,,,,200.0,0.1rpm,0.0,6000.0,200.0,JOG speed value,\n"));
}

void ParameterEditorFilesTest::exportHasTheHeadsOfTheInterface()
{
    MarkingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const LoadedEditor loaded;
    save(loaded, QStringLiteral("all.csv"));
    const QByteArray file = contentOf(QStringLiteral("all.csv"));
    QCOMPARE(file.count(",H,zh:Value,zh:Uint,zh:Min,zh:Max,zh:Default,zh:Description,\n"), 12);
}

void ParameterEditorFilesTest::openedValuesAreWhatAPageWriteSends()
{
    LoadedEditor loaded;
    // Page 11: Pn-B00 gets 5. Page 4: Pn-400 gets nothing, Pn-401 -100.0, a pair in tenths.
    put(QStringLiteral("set-up.scp"), "UG4tQjAw\r\nNQ==\r\nUG4tNDAw\r\n\r\nLTEwMC4w\r\n");
    open(loaded, QStringLiteral("set-up.scp"));
    ModalAnswers boxes;
    boxes.expect(editortext::writingDone);
    loaded.editor->writePageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 60000);
    QCOMPARE(loaded.peer.frames.count(wire::frame("01 10 e4 4c 00 01 02 00 05")), 1);
    QCOMPARE(loaded.peer.frames.count(wire::frame("01 10 e1 90 00 01 02 00 00")), 1);
    QCOMPARE(loaded.peer.frames.count(wire::frame("01 10 e1 91 00 02 04 ff ff fc 18")), 1);
}

void ParameterEditorFilesTest::nothingGoesToTheDriveByItself()
{
    const LoadedEditor loaded;
    save(loaded, QStringLiteral("set-up.scp"));
    open(loaded, QStringLiteral("set-up.scp"));
    QVERIFY(loaded.peer.frames.isEmpty());
}

QTEST_MAIN(ParameterEditorFilesTest)
#include "tst_parametereditor_files.moc"
