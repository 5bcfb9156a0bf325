// SPDX-License-Identifier: GPL-3.0-or-later
// How a form is operated: what keys, the wheel and the tabulator do, and what the form says of itself.
#include "helperrows.h"

#include "support/testdirectory.h"
#include "widgets/newcombox.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>

using namespace helperrows;

class BitFieldFormKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { directory.setLanguage(english); }
    void valueThatCannotBeTypedLooksLikeALabel_data();
    void valueThatCannotBeTypedLooksLikeALabel();
    void keyOnAClosedListActsOrIsKept_data();
    void keyOnAClosedListActsOrIsKept();
    void openListTakesTypedDigits();
    void wheelChoosesNothing();
    void tabulatorGoesFromTheValueToTheButtons_data();
    void tabulatorGoesFromTheValueToTheButtons();
    void captionFollowsTheTitleOfItsBox();
    void digitsWithoutTextsSayWhy_data();
    void digitsWithoutTextsSayWhy();

private:
    const TestDirectory directory;
};

void BitFieldFormKeysTest::valueThatCannotBeTypedLooksLikeALabel_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("isTyped");
    QTest::newRow("digits of a form") << "Pn-004"
                                      << "0x0000" << false;
    QTest::newRow("choice of a form") << "Pn-100"
                                      << "1" << false;
    QTest::newRow("form beside a typed value") << "Pn-211"
                                               << "0x0001" << true;
    QTest::newRow("no form") << "Pn-007"
                             << "200.0" << true;
}

void BitFieldFormKeysTest::valueThatCannotBeTypedLooksLikeALabel()
{
    QFETCH(QString, code);
    QFETCH(QString, value);
    QFETCH(bool, isTyped);
    const Helper helper = open(chinese, code, value);
    helper->show();
    QLineEdit *const edit = valueEdit(helper);
    QCOMPARE(edit->isReadOnly(), !isTyped);
    const QImage picture = helper->grab(QRect(edit->mapTo(helper.get(), QPoint()), edit->size())).toImage();
    const QColor ground(0xe1, 0xec, 0xee);
    // Frame and ground, away from the text and the rounded corners.
    for (const QPoint &place : {QPoint(picture.width() / 2, 0), QPoint(0, picture.height() / 2),
                                QPoint(picture.width() - 8, picture.height() / 2)})
        QCOMPARE(picture.pixelColor(place) == ground, !isTyped);
    QTest::keyClicks(edit, QStringLiteral("1"));
    QCOMPARE(edit->text() == value, !isTyped);
}

void BitFieldFormKeysTest::keyOnAClosedListActsOrIsKept_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("index");
    // From option 1 of three.
    QTest::newRow("digit of an option") << int(Qt::Key_2) << "2" << 1;
    QTest::newRow("first digit") << int(Qt::Key_0) << "0" << 1;
    QTest::newRow("down") << int(Qt::Key_Down) << "" << 2;
    QTest::newRow("up") << int(Qt::Key_Up) << "" << 0;
}

void BitFieldFormKeysTest::keyOnAClosedListActsOrIsKept()
{
    QFETCH(int, key);
    QFETCH(QString, text);
    QFETCH(int, index);
    const Helper helper =
        openWith(QStringLiteral("Pn-004"), QStringLiteral("0x0001"), {"Unit", "0: a0", "1: b1", "2: a2"});
    helper->show();
    QComboBox *const unit = box(helper, QStringLiteral("Pn-004uint"));
    QCOMPARE(unit->count(), 3);
    unit->setFocus();
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(unit, &press);
    QCOMPARE(unit->currentIndex(), index);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x000%1").arg(index));
}

void BitFieldFormKeysTest::openListTakesTypedDigits()
{
    const Helper helper =
        openWith(QStringLiteral("Pn-004"), QStringLiteral("0x0000"), {"Unit", "0: a", "1: b", "2: c"});
    helper->show();
    QComboBox *const unit = box(helper, QStringLiteral("Pn-004uint"));
    unit->setFocus();
    QTest::keyClick(unit, Qt::Key_Space);
    QTRY_VERIFY(unit->view()->isVisible());
    QTest::keyClick(unit->view(), Qt::Key_2);
    QTest::keyClick(unit->view(), Qt::Key_Return);
    QTRY_COMPARE(unit->currentIndex(), 2);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x0002"));
}

void BitFieldFormKeysTest::wheelChoosesNothing()
{
    const Helper helper = open(chinese, QStringLiteral("Pn-100"), QStringLiteral("3"));
    helper->show();
    QComboBox *const choice = box(helper, QStringLiteral("Pn-100"));
    choice->setFocus();
    const QPoint middle = choice->rect().center();
    for (const int delta : {120, -120}) {
        QWheelEvent wheel(middle, choice->mapToGlobal(middle), QPoint(), QPoint(0, delta), Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(choice, &wheel);
        QCOMPARE(choice->currentIndex(), 3);
        QVERIFY(!wheel.isAccepted());
    }
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("3"));
}

void BitFieldFormKeysTest::tabulatorGoesFromTheValueToTheButtons_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("order");
    QTest::newRow("form beside a typed value")
        << "Pn-211"
        << "0x0001"
        << QStringList({"valueEdit", "Pn-211-Pn-226_2", "Pn-211-Pn-226_3", "cancelButton", "okButton",
                        "writeButton"});
    QTest::newRow("form that makes the value")
        << "Pn-004"
        << "0x0000"
        << QStringList({"Pn-004uint", "Pn-004ten", "Pn-004hundreds", "Pn-004Thousands", "cancelButton",
                        "okButton", "writeButton"});
    QTest::newRow("no form") << "Pn-007"
                             << "200.0"
                             << QStringList({"valueEdit", "cancelButton", "okButton", "writeButton"});
}

void BitFieldFormKeysTest::tabulatorGoesFromTheValueToTheButtons()
{
    QFETCH(QString, code);
    QFETCH(QString, value);
    QFETCH(QStringList, order);
    const Helper helper = open(chinese, code, value);
    helper->show();
    QApplication::setActiveWindow(helper.get());
    QTRY_VERIFY(helper->focusWidget());
    QStringList reached;
    for (int i = 0; i < order.size(); ++i) {
        reached.append(helper->focusWidget()->objectName());
        QTest::keyClick(helper->focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(reached, order);
    QCOMPARE(helper->focusWidget()->objectName(), order.first());
}

void BitFieldFormKeysTest::captionFollowsTheTitleOfItsBox()
{
    const Helper helper = open(chinese, QStringLiteral("Pn-300"), QStringLiteral("0x0000"));
    const auto *const field = helper->findChild<NewCombox *>(QStringLiteral("Pn-300_31"));
    QVERIFY(field);
    QCOMPARE(field->label->text(), QStringLiteral("Thousands:"));
    box(helper, QStringLiteral("Pn-300_2"))->setCurrentIndex(1);
    QCOMPARE(field->label->text(), QStringLiteral("外部脉冲最小脉宽（高速端子）"));
    QCOMPARE(titleAround(field), field->label->text());
    box(helper, QStringLiteral("Pn-300_2"))->setCurrentIndex(0);
    QCOMPARE(field->label->text(), QStringLiteral("外部脉冲最小脉宽（低速端子）"));
    QCOMPARE(titleAround(field), field->label->text());
}

void BitFieldFormKeysTest::digitsWithoutTextsSayWhy_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("untitled");
    QTest::newRow("English") << english << QStringList({"Pn-300_1", "Pn-300_2", "Pn-300_3"});
    QTest::newRow("Chinese") << chinese << QStringList();
}

void BitFieldFormKeysTest::digitsWithoutTextsSayWhy()
{
    QFETCH(QString, language);
    QFETCH(QStringList, untitled);
    const Helper helper = open(language, QStringLiteral("Pn-300"), QStringLiteral("0x0000"));
    for (const char *name : {"Pn-300_0", "Pn-300_1", "Pn-300_2", "Pn-300_3"}) {
        const QComboBox *const comboBox = box(helper, QLatin1String(name));
        QVERIFY2(comboBox, name);
        const QString tip = untitled.contains(QLatin1String(name))
                                ? QStringLiteral("This catalogue has no texts for the digit.")
                                : QString();
        QCOMPARE(comboBox->toolTip(), tip);
        QCOMPARE(comboBox->parentWidget()->toolTip(), tip);
    }
}

QTEST_MAIN(BitFieldFormKeysTest)
#include "tst_bitfieldformview_keys.moc"
