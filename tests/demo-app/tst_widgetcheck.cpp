// SPDX-License-Identifier: GPL-3.0-or-later
// The look over a window's widgets: finds what has been broken on purpose, and is silent on what is sound.
#include "demo-app/widgetcheck.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <functional>

namespace {

const QString longText = QStringLiteral("Inertia identification result");
const QString shortText = QStringLiteral("Speed");
constexpr int narrow = 40; // pixels: less than the long text needs

using Build = std::function<void(QDialog *)>;

// The widget named "subject", in a layout that gives it room.
template <typename Widget, typename... Arguments>
Widget *add(QDialog *window, Arguments... arguments)
{
    auto *const widget = new Widget(arguments...);
    widget->setObjectName(QStringLiteral("subject"));
    if (!window->layout())
        new QHBoxLayout(window);
    window->layout()->addWidget(widget);
    return widget;
}

QIcon dot()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::transparent);
    QPainter(&pixmap).fillRect(6, 6, 4, 4, Qt::black);
    return pixmap;
}

QIcon nothing()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

QTableWidget *addTable(QDialog *window, const QString &text)
{
    auto *const table = add<QTableWidget>(window, 1, 1);
    table->setHorizontalHeaderLabels({shortText});
    table->setVerticalHeaderLabels({QStringLiteral("1")});
    table->setItem(0, 0, new QTableWidgetItem(text));
    table->setColumnWidth(0, 2 * narrow);
    table->setRowHeight(0, 24);
    return table;
}

QToolBar *addTool(QDialog *window, const QIcon &icon)
{
    auto *const bar = add<QToolBar>(window);
    bar->addAction(icon, shortText)->setObjectName(QStringLiteral("tool"));
    return bar;
}

// Lets two widgets of a layout keep their sizes where there is no room for them.
void squeeze(QDialog *window)
{
    auto *const one = add<QPushButton>(window, shortText);
    auto *const other = add<QPushButton>(window, shortText);
    one->setFixedWidth(100);
    other->setFixedWidth(100);
    window->layout()->setSizeConstraint(QLayout::SetNoConstraint);
    window->setFixedWidth(120);
}

void addInScrollArea(QDialog *window)
{
    auto *const area = add<QScrollArea>(window);
    auto *const inside = new QWidget;
    inside->resize(2000, 20);
    auto *const label = new QLabel(longText, inside);
    label->move(1500, 0);
    area->setWidget(inside);
}

QComboBox *addComboBox(QDialog *window, const QString &other)
{
    auto *const box = add<QComboBox>(window);
    box->addItems({QStringLiteral("A"), other});
    box->setFixedWidth(2 * narrow);
    return box;
}

struct Case
{
    const char *name;
    Build build;
};

const QVector<Case> &broken()
{
    static const QVector<Case> cases{
        {"label cuts off", [](QDialog *w) { add<QLabel>(w, longText)->setFixedWidth(narrow); }},
        {"wrapped label cuts off",
         [](QDialog *w) {
             auto *const label = add<QLabel>(w, longText + QLatin1Char(' ') + longText);
             label->setWordWrap(true);
             label->setFixedSize(100, 18);
         }},
        {"wrapped word cuts off",
         [](QDialog *w) {
             auto *const label = add<QLabel>(w, QStringLiteral("identification"));
             label->setWordWrap(true);
             label->setFixedSize(narrow, 200);
         }},
        {"elided label without tool tip cuts off",
         [](QDialog *w) {
             auto *const label = add<QLabel>(w, longText);
             label->setToolTip(shortText);
             label->setFixedWidth(narrow);
         }},
        {"button cuts off", [](QDialog *w) { add<QPushButton>(w, longText)->setFixedWidth(narrow); }},
        {"check box cuts off", [](QDialog *w) { add<QCheckBox>(w, longText)->setFixedWidth(narrow); }},
        {"radio button cuts off", [](QDialog *w) { add<QRadioButton>(w, longText)->setFixedWidth(narrow); }},
        {"tool button cuts off",
         [](QDialog *w) {
             auto *const button = add<QToolButton>(w);
             button->setText(longText);
             button->setFixedWidth(narrow);
         }},
        {"group title cuts off", [](QDialog *w) { add<QGroupBox>(w, longText)->setFixedWidth(narrow); }},
        {"read-only line cuts off",
         [](QDialog *w) {
             auto *const edit = add<QLineEdit>(w, longText);
             edit->setReadOnly(true);
             edit->setFixedWidth(narrow);
         }},
        {"spin box cuts off",
         [](QDialog *w) {
             auto *const box = add<QSpinBox>(w);
             box->setRange(0, 1000000000);
             box->setValue(1000000000);
             box->setFocusPolicy(Qt::NoFocus);
             box->setFixedWidth(narrow);
         }},
        {"choice cuts off",
         [](QDialog *w) {
             QComboBox *const box = addComboBox(w, longText);
             box->setCurrentIndex(1);
             box->setItemData(1, longText, Qt::ToolTipRole); // of the open list only
         }},
        {"tab cuts off",
         [](QDialog *w) {
             auto *const tabs = add<QTabBar>(w);
             tabs->addTab(longText);
             tabs->setUsesScrollButtons(false);
             tabs->setElideMode(Qt::ElideRight);
             tabs->setFixedWidth(narrow);
         }},
        {"table head cuts off",
         [](QDialog *w) { addTable(w, shortText)->setHorizontalHeaderLabels({longText}); }},
        {"row head cuts off",
         [](QDialog *w) {
             QTableWidget *const table = addTable(w, shortText);
             table->setVerticalHeaderLabels({longText});
             table->verticalHeader()->setFixedWidth(narrow);
         }},
        {"cell cuts off", [](QDialog *w) { addTable(w, longText); }},
        {"entry cuts off where the list does not scroll",
         [](QDialog *w) {
             auto *const list = add<QListWidget>(w);
             list->addItem(longText);
             list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
             list->setFixedWidth(2 * narrow);
         }},
        {"window cuts off its title",
         [](QDialog *w) {
             add<QLabel>(w, shortText);
             w->setWindowTitle(longText);
             w->setFixedWidth(150);
         }},
        {"label reaches out of",
         [](QDialog *w) { (new QLabel(longText, add<QGroupBox>(w, shortText)))->move(5, -12); }},
        {"tool has no picture", [](QDialog *w) { addTool(w, QIcon()); }},
        {"tool with a file that is not there has no picture",
         [](QDialog *w) { addTool(w, QIcon(QStringLiteral(":/pic/pic/nosuch.png"))); }},
        {"tool with an empty picture has no picture", [](QDialog *w) { addTool(w, nothing()); }},
        {"tools behind the arrow: has no room for",
         [](QDialog *w) {
             QToolBar *const bar = addTool(w, dot());
             bar->addAction(dot(), shortText);
             bar->addAction(dot(), shortText);
             bar->setFixedWidth(narrow);
         }},
        {"button overlaps", squeeze},
        {"window reaches out of", [](QDialog *w) { add<QLabel>(w, shortText)->setFixedWidth(5000); }},
    };
    return cases;
}

const QVector<Case> &sound()
{
    static const QVector<Case> cases{
        {"label", [](QDialog *w) { add<QLabel>(w, longText); }},
        {"wrapped label",
         [](QDialog *w) {
             auto *const label = add<QLabel>(w, longText);
             label->setWordWrap(true);
             label->setFixedSize(150, 60);
         }},
        {"label told in full by its tool tip",
         [](QDialog *w) {
             auto *const label = add<QLabel>(w, longText);
             label->setToolTip(longText);
             label->setFixedWidth(narrow);
         }},
        {"title",
         [](QDialog *w) {
             add<QLabel>(w, shortText);
             w->setWindowTitle(longText);
             w->setFixedWidth(400);
         }},
        {"buttons",
         [](QDialog *w) {
             add<QPushButton>(w, QStringLiteral("&Start"));
             add<QCheckBox>(w, longText);
             add<QRadioButton>(w, longText);
         }},
        {"group", [](QDialog *w) { add<QGroupBox>(w, longText)->setMinimumWidth(250); }},
        {"line", [](QDialog *w) { add<QLineEdit>(w, shortText); }},
        {"line that is being typed into",
         [](QDialog *w) {
             auto *const edit = add<QLineEdit>(w, longText);
             edit->setFixedWidth(narrow);
             edit->setFocus();
         }},
        {"list", [](QDialog *w) { addComboBox(w, QStringLiteral("B")); }},
        {"entry that is not chosen", [](QDialog *w) { addComboBox(w, longText); }},
        {"folder of the user's own",
         [](QDialog *w) {
             addComboBox(w, QStringLiteral("/home/engineer/machines/of/this/year"))->setCurrentIndex(1);
         }},
        {"choice with a tool tip",
         [](QDialog *w) {
             QComboBox *const box = addComboBox(w, longText);
             box->setCurrentIndex(1);
             box->setToolTip(longText);
         }},
        {"tabs",
         [](QDialog *w) {
             auto *const tabs = add<QTabWidget>(w);
             tabs->addTab(new QWidget, longText);
             tabs->addTab(new QLabel(longText), shortText);
         }},
        {"table", [](QDialog *w) { addTable(w, shortText); }},
        {"cell that wraps",
         [](QDialog *w) { addTable(w, QStringLiteral("Speed Speed Speed"))->setRowHeight(0, 60); }},
        {"cell with a tool tip", [](QDialog *w) { addTable(w, longText)->item(0, 0)->setToolTip(longText); }},
        {"cell that is scrolled out of sight",
         [](QDialog *w) {
             QTableWidget *const table = addTable(w, shortText);
             table->insertRow(1);
             table->setItem(1, 0, new QTableWidgetItem(longText));
             table->setRowHeight(0, 200);
             table->setFixedHeight(100);
         }},
        {"cell across two columns",
         [](QDialog *w) {
             QTableWidget *const table = addTable(w, longText);
             table->insertColumn(1);
             table->setHorizontalHeaderLabels({shortText, shortText});
             table->setColumnWidth(1, 300);
             table->setSpan(0, 0, 1, 2);
         }},
        {"list that scrolls",
         [](QDialog *w) {
             auto *const list = add<QListWidget>(w);
             list->addItem(longText);
             list->setFixedWidth(2 * narrow);
         }},
        {"what is scrolled out of sight", addInScrollArea},
        {"page that is not shown",
         [](QDialog *w) {
             auto *const pages = add<QStackedWidget>(w);
             pages->addWidget(new QLabel(shortText));
             auto *const hidden = new QLabel(longText);
             hidden->setFixedWidth(narrow);
             pages->addWidget(hidden);
         }},
        {"tool", [](QDialog *w) { addTool(w, dot()); }},
        {"tool of a text", [](QDialog *w) { add<QToolButton>(w)->setText(QStringLiteral("...")); }},
    };
    return cases;
}

QString show(QDialog *window, const Build &build)
{
    build(window);
    window->show();
    if (!QTest::qWaitForWindowActive(window))
        return QStringLiteral("the window does not come");
    QStringList lines;
    for (const WidgetFault &fault : widgetFaults(window))
        lines.append(fault.text());
    return lines.join(QLatin1String("; "));
}

} // namespace

class tst_WidgetCheck : public QObject
{
    Q_OBJECT

private slots:
    void plantedFaultIsFound_data();
    void plantedFaultIsFound();
    void soundWidgetIsPassedOver_data();
    void soundWidgetIsPassedOver();
    void faultNamesThePathOfItsWidget();
};

void tst_WidgetCheck::plantedFaultIsFound_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < broken().size(); ++i)
        QTest::newRow(broken().at(i).name) << i;
}

// The last words of the row's name are what must be said.
void tst_WidgetCheck::plantedFaultIsFound()
{
    QFETCH(int, index);
    QDialog window;
    const QString found = show(&window, broken().at(index).build);
    const QString name = QLatin1String(broken().at(index).name);
    const QStringList known{QStringLiteral("cuts off"), QStringLiteral("reaches out of"),
                            QStringLiteral("has no picture"), QStringLiteral("has no room for"),
                            QStringLiteral("overlaps")};
    int said = 0;
    for (const QString &words : known)
        said += name.contains(words) && found.contains(words);
    QVERIFY2(said == 1, qPrintable(QStringLiteral("found: ") + found));
}

void tst_WidgetCheck::soundWidgetIsPassedOver_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < sound().size(); ++i)
        QTest::newRow(sound().at(i).name) << i;
}

void tst_WidgetCheck::soundWidgetIsPassedOver()
{
    QFETCH(int, index);
    QDialog window;
    QCOMPARE(show(&window, sound().at(index).build), QString());
}

void tst_WidgetCheck::faultNamesThePathOfItsWidget()
{
    QDialog window;
    window.setObjectName(QStringLiteral("window"));
    auto *const box = add<QGroupBox>(&window, shortText);
    box->setObjectName(QStringLiteral("box"));
    box->setMinimumSize(200, 60);
    auto *const label = new QLabel(longText, box);
    label->setGeometry(10, 20, narrow, 20);
    QCOMPARE(show(&window, [](QDialog *) {}),
             QStringLiteral("window/box/QLabel: cuts off \"Inertia identification result\""));
}

QTEST_MAIN(tst_WidgetCheck)
#include "tst_widgetcheck.moc"
