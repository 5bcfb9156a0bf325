// SPDX-License-Identifier: GPL-3.0-or-later
// The panel of sources, functions and forced levels: what each widget signals, and what polling shows.
#include "monitor/io_control.h"

#include "support/modalanswers.h"
#include "support/signallog.h"
#include "support/testdirectory.h"
#include "support/wire.h"

#include <QComboBox>
#include <QPushButton>
#include <QTest>

namespace {

constexpr int diFunctions = 0x20D3;
constexpr int doFunctions = 0x20E7;

QByteArray pictureOf(const QIcon &icon)
{
    const QImage image = icon.pixmap(24, 22).toImage();
    return QByteArray(reinterpret_cast<const char *>(image.constBits()), int(image.sizeInBytes()));
}

// The panel, and all that it says, in order.
class Bench
{
public:
    explicit Bench(const char *language = "en_US")
    {
        directory.setLanguage(QString::fromLatin1(language));
        panel = new io_control;
        log("DIsource", &io_control::DIsourceChangedSignal);
        log("DOsource", &io_control::DOsourceChangedSignal);
        log("DIlevel", &io_control::DIBtnclickedSignal);
        log("DOlevel", &io_control::DOBtnclickedSignal);
        log("enable row", &io_control::DIEnableNumSignal);
        QObject::connect(panel, &io_control::DIEnableSignal, panel, [this](bool status) {
            said << (status ? QStringLiteral("enable on") : QStringLiteral("enable off"));
        });
        QObject::connect(panel, &io_control::DIfunctionChangedSignal, panel, [this](int num, int index) {
            said << QStringLiteral("DIfunction %1 %2").arg(num).arg(index);
        });
        QObject::connect(panel, &io_control::DOfunctionChangedSignal, panel, [this](int num, int index) {
            said << QStringLiteral("DOfunction %1 %2").arg(num).arg(index);
        });
    }
    ~Bench() { delete panel; }
    Q_DISABLE_COPY_MOVE(Bench)

    QComboBox *source(const QString &half) const
    {
        return panel->findChild<QComboBox *>(half + QLatin1String("SourceComboBox"));
    }
    // Rows count from 1, as their labels do.
    QComboBox *function(const QString &half, int row) const
    {
        return panel->findChild<QComboBox *>(half + QLatin1String("FunctionComboBox") + QString::number(row));
    }
    QPushButton *button(const QString &half, int row) const
    {
        return panel->findChild<QPushButton *>(half + QLatin1String("LevelButton") + QString::number(row));
    }
    bool isHigh(const QString &half, int row) const
    {
        const QPushButton *const level = button(half, row);
        const QIcon on(QStringLiteral(":/pic/pic/on.png"));
        const QIcon off(QStringLiteral(":/pic/pic/off.png"));
        const bool isOn = pictureOf(level->icon()) == pictureOf(on);
        if (!isOn && pictureOf(level->icon()) != pictureOf(off))
            qWarning("neither picture");
        if (isOn != level->isChecked())
            qWarning("picture and state differ");
        return isOn;
    }
    void poll(int address, const char *data) const
    {
        panel->handleio_DIDOFuncSlot(wire::bytes(data), address);
    }
    // All sixteen inputs, without function but for these rows.
    void pollInputs(const QMap<int, const char *> &rows) const
    {
        for (int row = 0; row < 16; ++row)
            poll(diFunctions + row, rows.value(row, "0000"));
    }

    TestDirectory directory;
    io_control *panel = nullptr;
    QStringList said;

private:
    template <typename Signal>
    void log(const char *name, Signal signal)
    {
        QObject::connect(panel, signal, panel, [this, name](int value) {
            said << QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(value);
        });
    }
};

} // namespace

class IoControlTest : public QObject
{
    Q_OBJECT

private slots:
    void rowsHoldTheFunctions_data();
    void rowsHoldTheFunctions();
    void sourcesHoldTheirItems();
    void buttonsStartDisabledAndLow();
    void sourceEnablesItsButtons_data();
    void sourceEnablesItsButtons();
    void sourceZeroKeepsTheLevels();
    void functionIsSignalled_data();
    void functionIsSignalled();
    void levelIsSignalled_data();
    void levelIsSignalled();
    void levelsAreOneWord();
    void pressOfTheEnableRowIsToldFirst();
    void pressOfAnyOtherRowIsNotTold();
    void outputNeverTellsOfTheEnable();
    void foreignSenderChangesNothing();
    void polledFunctionIsShown_data();
    void polledFunctionIsShown();
    void pollingNeverWrites();
    void enableRowIsToldAfterTheLastInput_data();
    void enableRowIsToldAfterTheLastInput();
    void servoButtonForcesItsRow();
    void servoButtonOfNoRowIsIgnored_data();
    void servoButtonOfNoRowIsIgnored();
    void withdrawnLevelsAreTakenBack();
    void missingCatalogueIsTold();
};

void IoControlTest::rowsHoldTheFunctions_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QString>("half");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("last");
    QTest::newRow("inputs") << QByteArray("en_US") << "di" << 31 << "1:Enabled Servo"
                            << "30:The trigger signal of origin return";
    QTest::newRow("outputs") << QByteArray("en_US") << "do" << 14 << "1:Servo is prepared"
                             << "13:Origin return finish";
    QTest::newRow("Chinese inputs") << QByteArray("zh_CN") << "di" << 31 << "1:伺服使能" << QString();
    QTest::newRow("Chinese outputs") << QByteArray("zh_CN") << "do" << 43 << QString() << "42:32位计数器";
}

void IoControlTest::rowsHoldTheFunctions()
{
    QFETCH(QByteArray, language);
    QFETCH(QString, half);
    QFETCH(int, count);
    QFETCH(QString, second);
    QFETCH(QString, last);
    const Bench bench(language.constData());
    for (int row = 1; row <= 16; ++row) {
        const QComboBox *const combo = bench.function(half, row);
        QCOMPARE(combo->count(), count);
        QVERIFY(combo->sizeAdjustPolicy() != QComboBox::AdjustToContents);
        if (!second.isEmpty())
            QCOMPARE(combo->itemText(1), second);
        if (!last.isEmpty())
            QCOMPARE(combo->itemText(count - 1), last);
    }
    QVERIFY(!bench.function(half, 17));
}

void IoControlTest::sourcesHoldTheirItems()
{
    const Bench bench;
    QCOMPARE(bench.source("di")->itemText(0), QStringLiteral("0:External hardware terminal control"));
    QCOMPARE(bench.source("di")->itemText(1), QStringLiteral("1:Auxiliary input control"));
    QCOMPARE(bench.source("do")->itemText(0), QStringLiteral("0:Internal program control"));
    QCOMPARE(bench.source("do")->itemText(1), QStringLiteral("1:Auxiliary output control"));
}

void IoControlTest::buttonsStartDisabledAndLow()
{
    const Bench bench;
    for (const char *half : {"di", "do"}) {
        for (int row = 1; row <= 16; ++row) {
            const QPushButton *const button = bench.button(QLatin1String(half), row);
            QVERIFY(!button->isEnabled());
            QVERIFY(button->isCheckable());
            QCOMPARE(button->size(), QSize(24, 22));
            QCOMPARE(button->styleSheet(), QStringLiteral("border-radius: 5px;"));
            QVERIFY(!bench.isHigh(QLatin1String(half), row));
        }
    }
}

void IoControlTest::sourceEnablesItsButtons_data()
{
    QTest::addColumn<QString>("half");
    QTest::addColumn<QString>("other");
    QTest::newRow("inputs") << "di"
                            << "do";
    QTest::newRow("outputs") << "do"
                             << "di";
}

void IoControlTest::sourceEnablesItsButtons()
{
    QFETCH(QString, half);
    QFETCH(QString, other);
    Bench bench;
    const QString said = half.toUpper() + QLatin1String("source ");
    for (const int index : {1, 0}) {
        bench.said.clear();
        bench.source(half)->setCurrentIndex(index);
        QCOMPARE(bench.said, QStringList(said + QString::number(index)));
        for (int row = 1; row <= 16; ++row) {
            QCOMPARE(bench.button(half, row)->isEnabled(), index == 1);
            QVERIFY(!bench.button(other, row)->isEnabled());
        }
    }
}

void IoControlTest::sourceZeroKeepsTheLevels()
{
    Bench bench;
    bench.source("di")->setCurrentIndex(1);
    bench.button("di", 3)->click();
    bench.source("di")->setCurrentIndex(0);
    QVERIFY(bench.isHigh("di", 3));
    bench.source("di")->setCurrentIndex(1);
    bench.said.clear();
    bench.button("di", 1)->click();
    QCOMPARE(bench.said, QStringList("DIlevel 5"));
}

void IoControlTest::functionIsSignalled_data()
{
    QTest::addColumn<QString>("half");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("said");
    QTest::newRow("DI5") << "di" << 5 << 12 << "DIfunction 4 12";
    QTest::newRow("DI1") << "di" << 1 << 1 << "DIfunction 0 1";
    QTest::newRow("DI16") << "di" << 16 << 30 << "DIfunction 15 30";
    QTest::newRow("DO1") << "do" << 1 << 13 << "DOfunction 0 13";
    QTest::newRow("DO16") << "do" << 16 << 9 << "DOfunction 15 9";
}

void IoControlTest::functionIsSignalled()
{
    QFETCH(QString, half);
    QFETCH(int, row);
    QFETCH(int, index);
    QFETCH(QString, said);
    Bench bench;
    bench.function(half, row)->setCurrentIndex(index);
    QCOMPARE(bench.said, QStringList(said));
    // A box without a choice has nothing to say.
    bench.function(half, row)->setCurrentIndex(-1);
    QCOMPARE(bench.said.size(), 1);
}

void IoControlTest::levelIsSignalled_data()
{
    QTest::addColumn<QString>("half");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("levels");
    for (const char *half : {"di", "do"}) {
        for (int row = 1; row <= 16; ++row)
            QTest::addRow("%s%d", half, row) << QString::fromLatin1(half) << row << (1 << (row - 1));
    }
}

void IoControlTest::levelIsSignalled()
{
    QFETCH(QString, half);
    QFETCH(int, row);
    QFETCH(int, levels);
    Bench bench;
    bench.source(half)->setCurrentIndex(1);
    bench.said.clear();
    bench.button(half, row)->click();
    QVERIFY(bench.isHigh(half, row));
    bench.button(half, row)->click();
    QVERIFY(!bench.isHigh(half, row));
    const QString said = half.toUpper() + QLatin1String("level ");
    QCOMPARE(bench.said, QStringList({said + QString::number(levels), said + QLatin1String("0")}));
}

void IoControlTest::levelsAreOneWord()
{
    Bench bench;
    bench.source("do")->setCurrentIndex(1);
    bench.said.clear();
    for (const int row : {1, 3, 16, 1})
        bench.button("do", row)->click();
    QCOMPARE(bench.said, QStringList({"DOlevel 1", "DOlevel 5", "DOlevel 32773", "DOlevel 32772"}));
}

void IoControlTest::pressOfTheEnableRowIsToldFirst()
{
    Bench bench;
    bench.source("di")->setCurrentIndex(1);
    bench.pollInputs({{2, "0001"}});
    bench.said.clear();
    bench.button("di", 3)->click();
    bench.button("di", 3)->click();
    QCOMPARE(bench.said, QStringList({"enable on", "DIlevel 4", "enable off", "DIlevel 0"}));
}

void IoControlTest::pressOfAnyOtherRowIsNotTold()
{
    Bench bench;
    bench.source("di")->setCurrentIndex(1);
    bench.pollInputs({{2, "0001"}});
    bench.said.clear();
    bench.button("di", 4)->click();
    QCOMPARE(bench.said, QStringList("DIlevel 8"));
}

void IoControlTest::outputNeverTellsOfTheEnable()
{
    Bench bench;
    bench.source("do")->setCurrentIndex(1);
    bench.poll(doFunctions, "0001");
    bench.said.clear();
    bench.button("do", 1)->click();
    QCOMPARE(bench.said, QStringList("DOlevel 1"));
}

void IoControlTest::foreignSenderChangesNothing()
{
    Bench bench;
    bench.panel->DIBtnclickedSlot(true);
    bench.panel->DOBtnclickedSlot(true);
    bench.panel->ComboBoxChangedSlot(1);
    QVERIFY(bench.said.isEmpty());
    QVERIFY(!bench.isHigh("di", 1));
    QVERIFY(!bench.button("di", 1)->isEnabled());
}

void IoControlTest::polledFunctionIsShown_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("half");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("index");
    const QByteArray english("en_US");
    const QByteArray chinese("zh_CN");
    QTest::newRow("DI1") << english << 0x20D3 << QByteArray("0001") << "di" << 1 << 1;
    QTest::newRow("DI5 with 12") << english << 0x20D7 << QByteArray("0012") << "di" << 5 << 12;
    QTest::newRow("DI16") << english << 0x20E2 << QByteArray("0030") << "di" << 16 << 30;
    QTest::newRow("DO1") << english << 0x20E7 << QByteArray("0009") << "do" << 1 << 9;
    QTest::newRow("DO16") << english << 0x20F6 << QByteArray("0013") << "do" << 16 << 13;
    QTest::newRow("no such function") << english << 0x20D3 << QByteArray("0031") << "di" << 1 << -1;
    QTest::newRow("a letter") << english << 0x20D3 << QByteArray("000C") << "di" << 1 << -1;
    QTest::newRow("DO 20 in English") << english << 0x20E7 << QByteArray("0020") << "do" << 1 << -1;
    QTest::newRow("DO 20 in Chinese") << chinese << 0x20E7 << QByteArray("0020") << "do" << 1 << 20;
}

void IoControlTest::polledFunctionIsShown()
{
    QFETCH(QByteArray, language);
    QFETCH(int, address);
    QFETCH(QByteArray, data);
    QFETCH(QString, half);
    QFETCH(int, row);
    QFETCH(int, index);
    Bench bench(language.constData());
    bench.poll(address, data.constData());
    QCOMPARE(bench.function(half, row)->currentIndex(), index);
    if (index < 0)
        QVERIFY(bench.function(half, row)->currentText().isEmpty());
}

void IoControlTest::pollingNeverWrites()
{
    Bench bench;
    for (const char *data : {"0001", "0012", "0099", "001F", "0000"}) {
        for (int row = 0; row < 16; ++row) {
            bench.poll(diFunctions + row, data);
            bench.poll(doFunctions + row, data);
        }
    }
    for (const int address : {0, 0x20D2, 0x20E3, 0x20E6, 0x20F7})
        bench.poll(address, "0001");
    for (const QString &said : qAsConst(bench.said))
        QVERIFY2(said.startsWith(QLatin1String("enable row")), qPrintable(said));
    QCOMPARE(bench.said.size(), 5);
}

void IoControlTest::enableRowIsToldAfterTheLastInput_data()
{
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<int>("told");
    QTest::newRow("none") << QList<int>() << 16;
    QTest::newRow("first") << QList<int>{0} << 0;
    QTest::newRow("last") << QList<int>{15} << 15;
    QTest::newRow("the lower of two") << QList<int>{9, 4} << 4;
}

void IoControlTest::enableRowIsToldAfterTheLastInput()
{
    QFETCH(QList<int>, rows);
    QFETCH(int, told);
    Bench bench;
    for (int row = 0; row < 16; ++row) {
        QVERIFY(bench.said.isEmpty());
        bench.poll(diFunctions + row, rows.contains(row) ? "0001" : "0002");
    }
    QCOMPARE(bench.said, QStringList(QStringLiteral("enable row %1").arg(told)));
}

void IoControlTest::servoButtonForcesItsRow()
{
    Bench bench;
    bench.panel->handleBtnEnableSlot(4, true);
    QVERIFY(bench.isHigh("di", 5));
    bench.panel->handleBtnEnableSlot(4, false);
    QVERIFY(!bench.isHigh("di", 5));
    QCOMPARE(bench.said, QStringList({"DIlevel 16", "DIlevel 0"}));
}

void IoControlTest::servoButtonOfNoRowIsIgnored_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("before the first") << -1;
    QTest::newRow("none") << 16;
    QTest::newRow("far off") << 1000;
}

void IoControlTest::servoButtonOfNoRowIsIgnored()
{
    QFETCH(int, row);
    Bench bench;
    bench.panel->handleBtnEnableSlot(row, true);
    QVERIFY(bench.said.isEmpty());
}

void IoControlTest::withdrawnLevelsAreTakenBack()
{
    Bench bench;
    for (const char *half : {"di", "do"}) {
        bench.source(QLatin1String(half))->setCurrentIndex(1);
        bench.button(QLatin1String(half), 1)->click();
        bench.button(QLatin1String(half), 2)->click();
    }
    bench.said.clear();
    bench.panel->restoreDILevels(1);
    QVERIFY(bench.isHigh("di", 1));
    QVERIFY(!bench.isHigh("di", 2));
    QVERIFY(bench.isHigh("do", 2));
    bench.panel->restoreDOLevels(0x8000);
    QVERIFY(!bench.isHigh("do", 1));
    QVERIFY(bench.isHigh("do", 16));
    QVERIFY(bench.said.isEmpty());
    // The next press goes out without them.
    bench.button("di", 3)->click();
    QCOMPARE(bench.said, QStringList("DIlevel 5"));
}

void IoControlTest::missingCatalogueIsTold()
{
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("File does not exist"));
    Q_CLEANUP_RESOURCE(catalogue);
    const Bench bench;
    Q_INIT_RESOURCE(catalogue);
    QVERIFY(boxes.isDone());
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Open Failed"));
    bench.poll(diFunctions, "0001");
    QCOMPARE(bench.function("di", 1)->currentIndex(), -1);
}

QTEST_MAIN(IoControlTest)

#include "tst_io_control.moc"
