// SPDX-License-Identifier: GPL-3.0-or-later
// What the page of the trial run shows: its texts, and the marks of the step that is current.
#include "trialbench.h"
#include "trialrun/holdbutton.h"
#include "widgets/labelgrop.h"

#include <QGroupBox>
#include <QLabel>

namespace {

const QString currentStyle =
    QStringLiteral("background-color:rgb(232, 238, 247);border:2px solid rgb(0, 0, 0)");
const QString otherStyle = QStringLiteral("background-color:#c3c4c4;border:2px solid rgb(0, 0, 0)");

} // namespace

class TrialRunPageTest : public QObject
{
    Q_OBJECT

private slots:
    void pageHasItsSizeFontAndTitle();
    void tablesSayWhatTheirRowsAre();
    void rangeIsBlankAtFirst();
    void currentStepIsMarked();
    void pictureShowsWhatAButtonIsFor();

private:
    static QStringList column(const QTableWidget *table, int column);
    // The label styles of the three steps: 1 for current, 0 for another, -1 for anything else.
    static QList<int> marks(const TrialBench &bench);
    static QStringList boxStyles(const TrialBench &bench);
    static bool shows(const QPushButton *button, const char *picture);
};

QStringList TrialRunPageTest::column(const QTableWidget *table, int column)
{
    QStringList texts{table->horizontalHeaderItem(column)->text()};
    for (int row = 0; row < table->rowCount(); ++row)
        texts.append(table->item(row, column)->text());
    return texts;
}

QList<int> TrialRunPageTest::marks(const TrialBench &bench)
{
    QList<int> found;
    const QList<QLabel *> labels = bench.window->findChildren<QLabel *>();
    for (const char *text : {"Frist Step", "Second Step", "Third Step"}) {
        for (const QLabel *label : labels) {
            if (label->text() == QLatin1String(text))
                found.append(label->styleSheet() == currentStyle ? 1
                             : label->styleSheet() == otherStyle ? 0
                                                                 : -1);
        }
    }
    return found;
}

QStringList TrialRunPageTest::boxStyles(const TrialBench &bench)
{
    QStringList styles;
    const QList<QGroupBox *> boxes = bench.window->findChildren<QGroupBox *>();
    for (const char *title : {"Run JOG", "Position Pnformation(Uint: PUU)", "Position Operation"}) {
        for (const QGroupBox *box : boxes) {
            if (box->title() == QLatin1String(title))
                styles.append(box->styleSheet());
        }
    }
    return styles;
}

bool TrialRunPageTest::shows(const QPushButton *button, const char *picture)
{
    const QIcon::Mode mode = button->isEnabled() ? QIcon::Normal : QIcon::Disabled;
    const QPixmap expected(QStringLiteral(":/pic/pic/%1.png").arg(QLatin1String(picture)));
    return !expected.isNull() &&
           button->icon().pixmap(button->iconSize(), mode).toImage() == expected.toImage();
}

void TrialRunPageTest::pageHasItsSizeFontAndTitle()
{
    TrialBench bench(false);
    QCOMPARE(bench.window->windowTitle(), QStringLiteral("Trial Run"));
    QCOMPARE(bench.window->widget()->minimumSize(), QSize(900, 600));
    QCOMPARE(bench.window->widget()->font().family(), QStringLiteral("微软雅黑"));
    QStringList buttons;
    const QList<QAbstractButton *> all = bench.window->findChildren<QAbstractButton *>();
    for (const QAbstractButton *button : all) {
        if (!button->text().isEmpty())
            buttons.append(button->text());
    }
    buttons.sort();
    QCOMPARE(buttons,
             (QStringList{"Continuous", "JOG RUN", "Once", "Position RUN", "Servo OFF", "Servo ON"}));
}

void TrialRunPageTest::tablesSayWhatTheirRowsAre()
{
    TrialBench bench(false);
    const QTableWidget *table = bench.drive().jogTable();
    QCOMPARE(column(table, 0), (QStringList{"Parameters", "JOG speed value", "JOG acceleration time",
                                            "JOG deceleration time", "JOG torque limit"}));
    QCOMPARE(column(table, 1), (QStringList{"Range", "0.0~6000.0", "0~60000", "0~60000", "0~300"}));
    QCOMPARE(column(table, 2), (QStringList{"Uint", "0.1RPM", "1MS", "1MS", "1%"}));
    QCOMPARE(column(table, 3), (QStringList{"Value", "", "", "", ""}));
    table = bench.drive().positionTable();
    QCOMPARE(column(table, 0),
             (QStringList{"Parameters", "Moving Distance", "Maximum running Speed", "Acceleration Time",
                          "Wait Time", "Overload protection gain", "Overspeed protection threshold",
                          "Position deviation excessive threshold"}));
    QCOMPARE(column(table, 1), (QStringList{"Range", "0~2147483647", "0.0~6000.0", "0~60000", "0~3600000",
                                            "50~300", "1.0~3.0", "0~13107200"}));
    QCOMPARE(column(table, 2), (QStringList{"Uint", "PUU", "0.1RPM", "1MS", "1ms", "1%", "0.1", "PULSE"}));
    QCOMPARE(column(table, 3), (QStringList{"Value", "", "", "", "", "", "", ""}));
}

void TrialRunPageTest::rangeIsBlankAtFirst()
{
    TrialBench bench(false);
    QStringList captions;
    const QList<LabelGrop *> groups = bench.window->findChildren<LabelGrop *>();
    for (const LabelGrop *group : groups) {
        captions.append(group->captionLabel->text());
        QCOMPARE(group->valueLabel->text(), QString());
    }
    QCOMPARE(captions,
             (QStringList{"Forward limit position", "Current position", "Rollback limit position"}));
}

void TrialRunPageTest::currentStepIsMarked()
{
    const QString black = QStringLiteral("color:black");
    const QString gray = QStringLiteral("color:gray");
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    QCOMPARE(marks(bench), (QList<int>{1, 0, 0}));
    QCOMPARE(boxStyles(bench), (QStringList{black, gray, gray}));
    TrialRunDriver::click(drive.servoOn());
    QCOMPARE(marks(bench), (QList<int>{1, 1, 0}));
    QCOMPARE(boxStyles(bench), (QStringList{black, black, gray}));
    TrialRunDriver::click(drive.positionRun());
    QCOMPARE(marks(bench), (QList<int>{0, 0, 1}));
    QCOMPARE(boxStyles(bench), (QStringList{gray, gray, black}));
    TrialRunDriver::click(drive.jogRun());
    QCOMPARE(marks(bench), (QList<int>{1, 0, 0}));
    QCOMPARE(boxStyles(bench).first(), black);
    QCOMPARE(boxStyles(bench).last(), gray);
}

void TrialRunPageTest::pictureShowsWhatAButtonIsFor()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    QVERIFY(shows(drive.jogForward(), "forewardPressed"));
    QVERIFY(shows(drive.jogRollback(), "rollbackPressed"));
    QVERIFY(shows(drive.runButton("Run"), "runPressed"));
    TrialRunDriver::click(drive.servoOn());
    QVERIFY(shows(drive.jogForward(), "foreward"));
    QVERIFY(shows(drive.jogRollback(), "rollback"));
    TrialRunDriver::hold(drive.jogRollback());
    QVERIFY(shows(drive.jogRollback(), "rollbackPressed"));
    TrialRunDriver::letGo(drive.jogRollback());
    QVERIFY(shows(drive.jogRollback(), "rollback"));
    QVERIFY(bench.enterStepThree());
    QVERIFY(shows(drive.jogForward(), "forewardPressed"));
    TrialRunDriver::click(drive.continuous());
    TrialBench::settled();
    QVERIFY(shows(drive.moveForward(), "forewardPressed"));
    QVERIFY(shows(drive.runButton("Run"), "run"));
    TrialRunDriver::click(drive.runButton("Run"));
    QVERIFY(shows(drive.runButton("Pause"), "pause"));
    TrialRunDriver::click(drive.runButton("Pause"));
    TrialRunDriver::click(drive.once());
    QVERIFY(shows(drive.moveForward(), "foreward"));
    QVERIFY(shows(drive.moveRollback(), "rollback"));
    QVERIFY(shows(drive.runButton("Run"), "runPressed"));
}

QTEST_MAIN(TrialRunPageTest)
#include "tst_trialrun_page.moc"
