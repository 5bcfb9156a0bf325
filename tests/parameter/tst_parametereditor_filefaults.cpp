// SPDX-License-Identifier: GPL-3.0-or-later
// Files that the editor can't save or read, and files that are not its own.
#include "editorfiles.h"

#include "parameter/loadededitor.h"
#include "support/editortexts.h"
#include "support/filedialoganswers.h"
#include "support/fulldisk.h"
#include "support/modalanswers.h"

#include <QFile>

using namespace editorfiles;
using namespace testfiles;

class ParameterEditorFileFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void failedSaveIsToldAndKeepsTheFile();
#ifdef Q_OS_UNIX
    void fullDiskIsToldAndKeepsTheFile();
#endif
    void fileThatIsGoneIsTold();
#ifdef Q_OS_LINUX
    void fileWhoseReadFailsIsTold();
#endif
    void fileThatIsTooLargeIsTold();
    void foreignFileIsReadAsFarAsItGoes_data();
    void foreignFileIsReadAsFarAsItGoes();
    void fileOfTheOtherLanguageLandsByPlace();
    void openingBeforeTheCatalogueIsThereIsHarmless();
};

void ParameterEditorFileFaultsTest::failedSaveIsToldAndKeepsTheFile()
{
    const LoadedEditor loaded;
    put(QStringLiteral("plain"), "old");
    ModalAnswers boxes;
    boxes.expect(editortext::saveFailed);
    save(loaded, QStringLiteral("plain/set-up.scp"));
    QCOMPARE(contentOf(QStringLiteral("plain")), QByteArray("old"));
}

#ifdef Q_OS_UNIX
void ParameterEditorFileFaultsTest::fullDiskIsToldAndKeepsTheFile()
{
    const LoadedEditor loaded;
    put(QStringLiteral("set-up.scp"), "old");
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("set-up.scp already exists.\nDo you want to replace it?"), QMessageBox::Yes);
    boxes.expect(editortext::saveFailed);

    {
        const FullDisk disk(100);
        save(loaded, QStringLiteral("set-up.scp"));
    }
    QCOMPARE(contentOf(QStringLiteral("set-up.scp")), QByteArray("old"));
}
#endif

void ParameterEditorFileFaultsTest::fileThatIsGoneIsTold()
{
    const LoadedEditor loaded;
    const QList<QStringList> before = valuesOf(loaded);
    put(QStringLiteral("set-up.scp"), "UG4tMDAw\r\nMQ==\r\n");
    ModalAnswers boxes;
    boxes.expect(editortext::openFailed);
    FileDialogAnswers dialogs;
    dialogs.expect(openTitle, QStringLiteral("set-up.scp"),
                   [] { QFile::remove(QStringLiteral("set-up.scp")); });
    loaded.editor->openExistParameter();
    QCOMPARE(valuesOf(loaded), before);
}

#ifdef Q_OS_LINUX
void ParameterEditorFileFaultsTest::fileWhoseReadFailsIsTold()
{
    const LoadedEditor loaded;
    const QList<QStringList> before = valuesOf(loaded);
    // It can be opened, but there is no memory at its start.
    QVERIFY(QFile::link(QStringLiteral("/proc/self/mem"), QStringLiteral("set-up.scp")));
    ModalAnswers boxes;
    boxes.expect(editortext::openFailed);
    open(loaded, QStringLiteral("set-up.scp"));
    QCOMPARE(valuesOf(loaded), before);
}
#endif

void ParameterEditorFileFaultsTest::fileThatIsTooLargeIsTold()
{
    const LoadedEditor loaded;
    const QList<QStringList> before = valuesOf(loaded);
    put(QStringLiteral("set-up.scp"), "UG4tMDAw\r\nMQ==\r\n" + QByteArray(4 * 1024 * 1024, '\n'));
    ModalAnswers boxes;
    boxes.expect(editortext::openFailed);
    open(loaded, QStringLiteral("set-up.scp"));
    QCOMPARE(valuesOf(loaded), before);
}

void ParameterEditorFileFaultsTest::foreignFileIsReadAsFarAsItGoes_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("first"); // of the page Pn-1XX afterwards; the other pages stay
    QByteArray binary;
    for (int i = 0; i < 65536; ++i)
        binary.append(char(i * 7 + i / 256));
    QTest::newRow("empty") << QByteArray() << "0";
    QTest::newRow("binary") << binary << "0";
    QTest::newRow("line of a megabyte") << QByteArray(1024 * 1024, 'A') << "0";
    QTest::newRow("cut within the first value") << QByteArray("UG4tMTAw\r\nMTI") << "12";
    QTest::newRow("too many values") << "UG4tMTAw\r\n" + QByteArray("Nw==\r\n").repeated(100000) << "7";
    QTest::newRow("page that there is not") << QByteArray("UG4tRjAw\r\nNw==\r\n") << "0";
}

void ParameterEditorFileFaultsTest::foreignFileIsReadAsFarAsItGoes()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, first);
    const LoadedEditor loaded;
    const ModalAnswers noBox;
    loaded.value(1, 0)->setText(QStringLiteral("0"));
    QList<QStringList> before = valuesOf(loaded);
    put(QStringLiteral("foreign.scp"), file);
    open(loaded, QStringLiteral("foreign.scp"));
    QList<QStringList> after = valuesOf(loaded);
    QCOMPARE(after.at(1).first(), first);
    after.removeAt(1);
    before.removeAt(1);
    QCOMPARE(after, before);
}

void ParameterEditorFileFaultsTest::fileOfTheOtherLanguageLandsByPlace()
{
    QByteArray file;
    QList<QStringList> chinese;
    {
        const LoadedEditor loaded(QStringLiteral("zh_CN"));
        save(loaded, QStringLiteral("set-up.scp"));
        file = contentOf(QStringLiteral("set-up.scp"));
        chinese = valuesOf(loaded);
    }
    const LoadedEditor loaded;
    const ModalAnswers noBox;
    put(QStringLiteral("set-up.scp"), file);
    setAllValues(loaded, QStringLiteral("kept"));
    open(loaded, QStringLiteral("set-up.scp"));
    const QList<QStringList> english = valuesOf(loaded);
    for (int page = 0; page < 12; ++page) {
        for (int row = 0; row < english.at(page).size(); ++row)
            QCOMPARE(english.at(page).at(row), chinese.at(page).value(row, QStringLiteral("kept")));
    }
    // The Chinese page has 21 rows, the English one more.
    QCOMPARE(english.at(0).at(21), QStringLiteral("kept"));
}

void ParameterEditorFileFaultsTest::openingBeforeTheCatalogueIsThereIsHarmless()
{
    const TestDirectory directory;
    ParameterEditor editor;
    put(QStringLiteral("set-up.scp"), "UG4tMTAw\r\nNw==\r\n");
    const ModalAnswers noBox;
    FileDialogAnswers dialogs;
    dialogs.expect(openTitle, QStringLiteral("set-up.scp"));
    editor.openExistParameter();
    QCOMPARE(dialogs.seen.size(), 1);
}

QTEST_MAIN(ParameterEditorFileFaultsTest)
#include "tst_parametereditor_filefaults.moc"
