// SPDX-License-Identifier: GPL-3.0-or-later
// From the connection dialog to every parameter on the screen and back into the drive, in both languages.
#include "catalogue/parametercode.h"
#include "link/serialport.h"
#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "shell/mainwindow.h"
#include "support/editordriver.h"
#include "support/modalanswers.h"
#include "support/rununtil.h"
#include "support/workplace.h"

#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProgressDialog>
#include <QStackedWidget>
#include <QTest>

namespace {

const QString readingDone = QStringLiteral("Parameters reading completed");
const QString writingDone = QStringLiteral("Parameters writing completed");

} // namespace

class ParametersEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void wholeCatalogueIsReadFromTheDrive_data();
    void wholeCatalogueIsReadFromTheDrive();
    void changedValueIsShownBlue();
    void pageWriteReachesBothCopiesOfTheDrive();
    void ramWriteIsLostWithThePower();
    void oneParameterIsReadFromItsMenu();
    void titleAndIndicatorFollow();
};

void ParametersEndToEndTest::wholeCatalogueIsReadFromTheDrive_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("speed");
    QTest::addColumn<QString>("done");
    QTest::addColumn<int>("rows");
    QTest::newRow("English over RS-485") << "en_US"
                                         << "115200(485)" << readingDone << 520;
    QTest::newRow("English over USB") << "en_US"
                                      << "USB" << readingDone << 520;
    QTest::newRow("Chinese over RS-485") << "zh_CN"
                                         << "115200(485)"
                                         << "参数读取完成" << 571;
    QTest::newRow("Chinese over USB") << "zh_CN"
                                      << "USB"
                                      << "参数读取完成" << 571;
}

void ParametersEndToEndTest::wholeCatalogueIsReadFromTheDrive()
{
    QFETCH(QString, language);
    QFETCH(QString, speed);
    QFETCH(QString, done);
    QFETCH(int, rows);
    ModalAnswers boxes;
    Workplace place(language);
    QVERIFY(!place.isShownOnline());
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, speed);
    QVERIFY(editor);
    // Every value is another than the default, so that what is shown can only come from the drive.
    for (int index = 0; index < 12; ++index) {
        const ParameterTable *const page = EditorDriver(editor).page(index);
        for (int row = 0; row < page->rowCount(); ++row)
            page->item(row, ParameterTable::ValueColumn)->setText(QStringLiteral("unread"));
    }
    place.drive->resetCounters();
    boxes.expect(done);
    Workplace::clickAction(editor, "readAction");
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 30000));

    // A busy machine may make the link ask again; no row is left out for it.
    QVERIFY(int(place.drive->counters().requests) >= rows);
    int shown = 0;
    for (int index = 0; index < 12; ++index) {
        const ParameterTable *const page = EditorDriver(editor).page(index);
        for (int row = 0; row < page->rowCount(); ++row, ++shown) {
            const QString text = page->text(row, ParameterTable::ValueColumn);
            QVERIFY2(text != QLatin1String("unread") && !text.isEmpty(), qPrintable(page->code(row)));
        }
    }
    QCOMPARE(shown, rows);
    // Some registers, read off the drive and converted by hand.
    QCOMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-007")),
             QString::number(*place.drive->readRegister(7) / 10.0, 'f', 1));
    QCOMPARE(EditorDriver(editor).value(10, QStringLiteral("Pn-A04")),
             QString::number(*place.drive->readPair(1004)));
    QCOMPARE(EditorDriver(editor).value(6, QStringLiteral("Pn-638")),
             QString::number(*place.drive->readRegister(638) / 100.0, 'f', 2));
    QCOMPARE(EditorDriver(editor).value(2, QStringLiteral("Pn-200")),
             QStringLiteral("0x%1").arg(*place.drive->readRegister(200), 4, 16, QLatin1Char('0')));
}

void ParametersEndToEndTest::changedValueIsShownBlue()
{
    ModalAnswers boxes;
    Workplace place;
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, QStringLiteral("USB"));
    QVERIFY(editor);
    place.drive->writeRegister(7, 1234);
    boxes.expect(readingDone);
    Workplace::clickAction(editor, "readAction");
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 30000));
    QCOMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-007")), QStringLiteral("123.4"));
    QCOMPARE(EditorDriver(editor).colour(0, QStringLiteral("Pn-007")), QColor(Qt::blue));
}

void ParametersEndToEndTest::pageWriteReachesBothCopiesOfTheDrive()
{
    ModalAnswers boxes;
    Workplace place;
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, QStringLiteral("USB"));
    QVERIFY(editor);
    EditorDriver(editor).keepOnly({"Pn-007", "Pn-100", "Pn-304", "Pn-A04"});
    EditorDriver(editor).setValue(0, QStringLiteral("Pn-007"), QStringLiteral("321.5"));
    EditorDriver(editor).setValue(10, QStringLiteral("Pn-A04"), QStringLiteral("-123456"));
    boxes.expect(writingDone);
    Workplace::clickAction(editor, "writeAction");
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 20000));
    QCOMPARE(*place.drive->readRegister(7), quint16(3215));
    QCOMPARE(*place.drive->readPair(1004), -123456);
    place.drive->powerCycle();
    QCOMPARE(*place.drive->readRegister(7), quint16(3215));
    QCOMPARE(*place.drive->readPair(1004), -123456);
}

void ParametersEndToEndTest::ramWriteIsLostWithThePower()
{
    ModalAnswers boxes;
    Workplace place;
    ParameterEditor *const editor = EditorDriver::openConnected(&place, QStringLiteral("USB"));
    QVERIFY(editor);
    const quint16 stored = *place.drive->readRegister(7);
    editor->writeCurrentParameterToServo({"Pn-007", "", "55.5", "0.1rpm", "0.0", "6000.0"}, true);
    QTRY_COMPARE(*place.drive->readRegister(7), quint16(555));
    QCOMPARE(*place.drive->readRegister(7, kt500sim::RegisterCopy::Stored), stored);
    place.drive->powerCycle();
    QCOMPARE(*place.drive->readRegister(7), stored);
}

void ParametersEndToEndTest::oneParameterIsReadFromItsMenu()
{
    ModalAnswers boxes;
    Workplace place;
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, QStringLiteral("115200(485)"));
    QVERIFY(editor);
    place.drive->writeRegister(8, 777);
    ParameterTable *const page = EditorDriver(editor).page(0);
    const int row = EditorDriver::rowOf(page, QStringLiteral("Pn-008"));
    const QPoint pos = page->visualItemRect(page->item(row, ParameterTable::ValueColumn)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, page->viewport()->mapToGlobal(pos));
    QCoreApplication::sendEvent(page->viewport(), &event);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
    QTRY_COMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-008")), QStringLiteral("777"));
}

void ParametersEndToEndTest::titleAndIndicatorFollow()
{
    Workplace place(QStringLiteral("zh_CN"));
    place.connectTo(QStringLiteral("115200(485)"));
    QTRY_VERIFY(place.isShownOnline());
    QVERIFY(EditorDriver::open(place));
    auto *const area = place.window()->findChild<QMdiArea *>();
    area->subWindowList().first()->showMaximized();
    QTRY_COMPARE(place.window()->windowTitle(), QStringLiteral("Velmora V1.0.3 - [参数编辑]"));
    // Asked for again, the window is only activated.
    Workplace::clickAction(place.window(), "actionParameter_Editor");
    QCOMPARE(area->subWindowList().size(), 1);
}

QTEST_MAIN(ParametersEndToEndTest)
#include "tst_parameters_endtoend.moc"
