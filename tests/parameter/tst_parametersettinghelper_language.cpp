// SPDX-License-Identifier: GPL-3.0-or-later
// What the setting helper takes from the language: the words of the translation and the catalogue it tries.
#include "helperrows.h"

#include "link/serialport.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QGridLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTranslator>

using namespace helperrows;

class ParameterSettingHelperLanguageTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void reservedRowsOfTheChineseCatalogueAreClosedToWrites();
    void widthIsTranslated_data();
    void widthIsTranslated();
    void catalogueOfTheLanguageAloneIsTried_data();
    void catalogueOfTheLanguageAloneIsTried();

private:
    const TestDirectory directory;
    QTranslator translation;
};

namespace {

const QString reservedWord = QStringLiteral("保留");

QList<Row> reservedRows()
{
    QList<Row> reserved;
    const QList<Row> &rows = rowsOf(chinese);
    for (const Row &row : rows) {
        if (row.values.last() == reservedWord)
            reserved.append(row);
    }
    return reserved;
}

QPushButton *button(const Helper &helper, const char *name)
{
    return helper->findChild<QPushButton *>(QLatin1String(name));
}

} // namespace

void ParameterSettingHelperLanguageTest::initTestCase()
{
    // Theirs is the place of the product's catalogues, for one test alone.
    Q_CLEANUP_RESOURCE(didosonly);
    Q_CLEANUP_RESOURCE(alarmsonly);
    QVERIFY(translation.load(QStringLiteral(":/lan/sd_zh_CN.qm")));
}

void ParameterSettingHelperLanguageTest::init()
{
    directory.setLanguage(chinese);
}

void ParameterSettingHelperLanguageTest::cleanup()
{
    QCoreApplication::removeTranslator(&translation);
    SerialPort::portOpened = false;
}

void ParameterSettingHelperLanguageTest::reservedRowsOfTheChineseCatalogueAreClosedToWrites()
{
    QVERIFY(QCoreApplication::installTranslator(&translation));
    SerialPort::portOpened = true;
    const QList<Row> rows = reservedRows();
    QVERIFY(rows.size() > 40);
    for (const Row &row : rows) {
        const QByteArray code = row.values.first().toUtf8();
        const ModalAnswers answers;
        const auto helper = std::make_unique<ParameterSettingHelper>(row.values, row.details);
        QSignalSpy shown(helper.get(), &ParameterSettingHelper::setParamValue);
        QSignalSpy written(helper.get(), &ParameterSettingHelper::writeDataToServo);
        helper->show();
        QVERIFY2(!valueEdit(helper)->isEnabled(), code);
        QVERIFY2(!button(helper, "writeButton")->isVisible(), code);
        QVERIFY2(button(helper, "okButton")->isVisible(), code);
        // A value that the row would take.
        valueEdit(helper)->setText(row.values.at(8).isEmpty() ? QStringLiteral("0") : row.values.at(8));
        QTest::mouseClick(button(helper, "okButton"), Qt::LeftButton);
        QVERIFY2(!helper->isVisible(), code);
        QVERIFY2(shown.isEmpty() && written.isEmpty(), code);
    }
    // Any other row can be written.
    const Helper other = open(chinese, QStringLiteral("Pn-007"), QStringLiteral("200.0"));
    other->show();
    QVERIFY(valueEdit(other)->isEnabled());
    QVERIFY(button(other, "writeButton")->isVisible());
}

void ParameterSettingHelperLanguageTest::widthIsTranslated_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("width");
    QTest::newRow("one register") << "Pn-007"
                                  << "16位";
    QTest::newRow("two registers") << "Pn-314"
                                   << "32位";
}

void ParameterSettingHelperLanguageTest::widthIsTranslated()
{
    QFETCH(QString, code);
    QFETCH(QString, width);
    QVERIFY(QCoreApplication::installTranslator(&translation));
    const Helper helper = open(chinese, code, QStringLiteral("0"));
    QVERIFY(helper);
    const auto *const grid = qobject_cast<QGridLayout *>(helper->layout());
    const auto *const label = qobject_cast<QLabel *>(grid->itemAtPosition(1, 4)->widget());
    QVERIFY(label);
    QCOMPARE(label->text(), width);
}

void ParameterSettingHelperLanguageTest::catalogueOfTheLanguageAloneIsTried_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("hasDidos"); // false: the English alarms are all that there is
    QTest::addColumn<bool>("isFound");
    QTest::newRow("DI/DO in Chinese") << "zh_CN" << true << true;
    QTest::newRow("alarms in Chinese") << "zh_CN" << false << false;
    QTest::newRow("DI/DO in English") << "en_US" << true << false;
    QTest::newRow("alarms in English") << "en_US" << false << true;
    QTest::newRow("DI/DO in another language") << "de_DE" << true << false;
    QTest::newRow("alarms in another language") << "de_DE" << false << true;
}

void ParameterSettingHelperLanguageTest::catalogueOfTheLanguageAloneIsTried()
{
    QFETCH(QString, language);
    QFETCH(bool, hasDidos);
    QFETCH(bool, isFound);
    const Row row = rowOf(english, QStringLiteral("Pn-007"));
    // The list of the 32-bit codes is read once, so a helper is made while it is there.
    const ParameterSettingHelper first(row.values, row.details);
    directory.setLanguage(language);
    ModalAnswers answers;
    if (!isFound)
        answers.expect(QStringLiteral("File does not exist"));

    Q_CLEANUP_RESOURCE(catalogue);
    if (hasDidos)
        Q_INIT_RESOURCE(didosonly);
    else
        Q_INIT_RESOURCE(alarmsonly);
    const ParameterSettingHelper helper(row.values, row.details);
    if (hasDidos)
        Q_CLEANUP_RESOURCE(didosonly);
    else
        Q_CLEANUP_RESOURCE(alarmsonly);
    Q_INIT_RESOURCE(catalogue);
    QCOMPARE(answers.seen.size(), isFound ? 0 : 1);
}

QTEST_MAIN(ParameterSettingHelperLanguageTest)
#include "tst_parametersettinghelper_language.moc"
