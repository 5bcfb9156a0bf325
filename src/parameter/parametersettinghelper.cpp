// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parametersettinghelper.h"

#include "catalogue/doubleaddress.h"
#include "catalogue/parametercode.h"
#include "link/linkstate.h"
#include "parameter/bitfieldformview.h"
#include "parameter/bitfieldrules.h"
#include "parameter/parametersymbols.h"
#include "settings/applanguage.h"
#include "widgets/messages.h"
#include "widgets/sunkenlabel.h"

#include <QComboBox>
#include <QFile>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPalette>
#include <QPushButton>
#include <QVBoxLayout>
#include <QXmlStreamReader>

namespace {

constexpr int fontSize = 10;     // points
constexpr int nameFontSize = 15; // points
constexpr int columnCount = 5;
constexpr int formRow = 5;
constexpr int formRowSpan = 9;
constexpr int buttonRow = 15;
constexpr int buttonSpace = 20; // pixels

const QLatin1String boldWeight("Black");
const QString readOnlyMark = QStringLiteral("★");

// The value of a read-only row is what its dialog is opened for; the usual grey is too faint for it.
void setReadableWhenDisabled(QWidget *widget)
{
    QPalette palette = widget->palette();
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText})
        palette.setColor(QPalette::Disabled, role, QColor(0x50, 0x50, 0x50));
    widget->setPalette(palette);
}

} // namespace

ParameterSettingHelper::ParameterSettingHelper(QStringList values, QStringList details, QWidget *parent)
    : QDialog(parent)
    , rowValues(std::move(values))
    , rowDetails(std::move(details))
{
    buildWindow();
    buildForm();
    finishWindow();
    checkCatalogue();
}

void ParameterSettingHelper::buildWindow()
{
    setWindowTitle(tr("Parameter Setting Helper"));
    setWindowIcon(QIcon(QStringLiteral(":/pic/pic/logo.ico")));
    setObjectName(QStringLiteral("widget"));
    setFont(QFont(QStringLiteral("Tahoma"), fontSize));
    resize(650, 380);

    auto *grid = new QGridLayout(this);
    grid->setSpacing(2);
    addAttributes(grid);
    addFlags(grid);

    auto *name = new QLabel(rowValues.value(NameValue));
    name->setObjectName(QStringLiteral("nameLabel"));
    name->setTextFormat(Qt::PlainText);
    name->setAlignment(Qt::AlignCenter);
    name->setWordWrap(true);
    name->setFont(QFont(QStringLiteral("Tahoma"), nameFontSize, QFont::Bold));
    grid->addWidget(name, 3, 0, 1, columnCount);

    grid->addLayout(buildValueRow(), 4, 0, 1, columnCount);

    formFrame = new QFrame;
    formFrame->setObjectName(QStringLiteral("formFrame"));
    formFrame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    grid->addWidget(formFrame, formRow, 0, formRowSpan, columnCount);
    grid->setRowStretch(formRow, 1);

    grid->addLayout(buildButtons(), buttonRow, 0, 1, columnCount);
}

void ParameterSettingHelper::addAttributes(QGridLayout *grid)
{
    // "Uint" is so spelt.
    const QStringList heads{tr("Parameter Name"), tr("Uint"), tr("Minimum ~ Maximum"), tr("Default"),
                            tr("16/32bit")};
    const QString code = rowValues.value(CodeValue);
    const QStringList texts{code, rowValues.value(UnitValue),
                            rowValues.value(MinValue) + QLatin1String(" ~ ") + rowValues.value(MaxValue),
                            rowValues.value(DefaultValue), isDouble(code) ? tr("32bit") : tr("16bit")};
    for (int column = 0; column < columnCount; ++column) {
        grid->addWidget(new SunkenLabel(heads.at(column), boldWeight, fontSize), 0, column);
        grid->addWidget(new SunkenLabel(texts.at(column), QString(), fontSize), 1, column);
        grid->setColumnStretch(column, 1);
    }
}

void ParameterSettingHelper::addFlags(QGridLayout *grid)
{
    // These words are not those of the table's legend, and it is wanted so.
    const QStringList words{tr("Read Only"), tr("Set When Servo OFF"), tr("Valid After Re-power on"),
                            tr("Volatile Parameter"), tr("Hex data,modified by bit")};
    const auto symbols = parameterSymbols();
    for (int i = 0; i < parameterSymbolCount; ++i) {
        const ParameterSymbol &symbol = symbols.at(std::size_t(i));
        auto *mark = new QLabel;
        auto *word = new QLabel;
        auto *pair = new QHBoxLayout;
        pair->setContentsMargins(0, 2, 8, 2);
        pair->addWidget(mark);
        pair->addWidget(word, 1);
        grid->addLayout(pair, 2, i);
        if (rowValues.value(ReadOnlyValue + i) != symbol.symbol)
            continue;
        mark->setText(symbol.symbol);
        word->setText(words.at(i));
        for (QLabel *label : {mark, word}) {
            // A label with a style sheet of its own does not take the dialog's font.
            label->setFont(font());
            label->setStyleSheet(QLatin1String("color:") + symbol.colour.name().toUpper());
        }
    }
}

QLayout *ParameterSettingHelper::buildValueRow()
{
    valueEdit = new QLineEdit;
    valueEdit->setObjectName(QStringLiteral("valueEdit"));
    if (rowValues.value(DefaultValue) != QLatin1String("*"))
        valueEdit->setText(rowValues.value(TextValue));
    valueEdit->setDisabled(isClosedToWrites());
    setReadableWhenDisabled(valueEdit);

    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(new QLabel(tr("Value")));
    row->addWidget(valueEdit);
    row->addStretch();
    return row;
}

QLayout *ParameterSettingHelper::buildButtons()
{
    auto *ok = new QPushButton(tr("OK"));
    ok->setObjectName(QStringLiteral("okButton"));
    ok->setToolTip(tr("Write RAM"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &ParameterSettingHelper::getParamValue);
    auto *cancel = new QPushButton(tr("Cancel"));
    cancel->setObjectName(QStringLiteral("cancelButton"));
    connect(cancel, &QPushButton::clicked, this, &ParameterSettingHelper::close);
    auto *write = new QPushButton(tr("Write to Servo"));
    write->setObjectName(QStringLiteral("writeButton"));
    write->setToolTip(tr("Write EEPROM"));
    connect(write, &QPushButton::clicked, this, &ParameterSettingHelper::writeToServo);

    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(cancel);
    if (isClosedToWrites()) {
        row->addSpacing(buttonSpace);
        row->addWidget(ok);
        write->hide();
    } else {
        row->addWidget(ok);
        row->addSpacing(buttonSpace);
    }
    row->addWidget(write);
    row->addStretch();
    return row;
}

void ParameterSettingHelper::buildForm()
{
    const BitFieldForm *const form = bitFieldForm(rowValues.value(CodeValue));
    if (!form || !hasContent(*form, detailBlocks(rowDetails)))
        return;
    valueEdit->setReadOnly(!form->isEditWritable);
    formView =
        new BitFieldFormView(*form, rowDetails, valueEdit->text(), rowValues.value(MaxValue), formFrame);
    auto *layout = new QVBoxLayout(formFrame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(formView);

    const QList<QComboBox *> comboBoxes = formView->comboBoxes();
    for (QComboBox *comboBox : comboBoxes) {
        comboBox->setDisabled(isClosedToWrites());
        setReadableWhenDisabled(comboBox);
        connect(comboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
                &ParameterSettingHelper::NewComboxcurrentIndexChanged);
    }
    connect(valueEdit, &QLineEdit::textEdited, formView, &BitFieldFormView::showText);
}

// Only the form changes the value: nothing invites to type.
void ParameterSettingHelper::showValueAsLabel()
{
    valueEdit->setFocusPolicy(Qt::ClickFocus); // its text can be copied
    // An edit with a style sheet of its own does not take the dialog's font.
    valueEdit->setFont(font());
    valueEdit->setStyleSheet(QStringLiteral("background: transparent; border: none;"));
}

// The value, the choices from top to bottom, then the buttons from left to right.
void ParameterSettingHelper::orderTabs()
{
    QWidget *last = valueEdit;
    const auto add = [&last](QWidget *next) {
        setTabOrder(last, next);
        last = next;
    };
    if (formView) {
        const QList<QComboBox *> comboBoxes = formView->comboBoxes();
        for (QComboBox *comboBox : comboBoxes)
            add(comboBox);
    }
    for (const char *name : {"cancelButton", "okButton", "writeButton"})
        add(findChild<QPushButton *>(QLatin1String(name)));
}

void ParameterSettingHelper::finishWindow()
{
    orderTabs();
    // A widget that comes under a style sheet does not take its parent's font: the sheet follows the widgets.
    setStyleSheet(QStringLiteral("QWidget#widget{background-color: #E1ECEE;}"));
    if (valueEdit->isReadOnly())
        showValueAsLabel();
    const QList<QComboBox *> comboBoxes = formView ? formView->comboBoxes() : QList<QComboBox *>();
    if (valueEdit->isReadOnly() && !comboBoxes.isEmpty()) {
        comboBoxes.first()->setFocus();
    } else if (valueEdit->isEnabled()) {
        valueEdit->setFocus();
        valueEdit->selectAll();
    }
    // A window's own minimum does not count the further lines of wrapped texts.
    const int widthShown = qMax(width(), minimumSizeHint().width());
    resize(widthShown, qMax(height(), layout()->heightForWidth(widthShown)));
}

void ParameterSettingHelper::NewComboxcurrentIndexChanged(int index)
{
    if (sender())
        valueEdit->setText(chosenText(valueEdit->text(), sender()->objectName(), index));
}

QString ParameterSettingHelper::catalogueFailure(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return tr("File does not exist");
    if (!file.open(QIODevice::ReadOnly))
        return tr("Failed opening parameter XML!");
    QXmlStreamReader xml(&file);
    while (!xml.atEnd())
        xml.readNext();
    return QString();
}

// The catalogue is only tried and nothing of it kept; in English it is that of the alarms. It is wanted so.
void ParameterSettingHelper::checkCatalogue()
{
    const QString failure =
        catalogueFailure(isChinese(configuredLanguage())
                             ? QStringLiteral(":/parameter/parameter/DIDO_zh_CN.xml")
                             : QStringLiteral(":/AlarmErrorInfor/AlarmError/AlarmError_en_US.xml"));
    if (!failure.isEmpty())
        QMessageBox::warning(this, tr("Open Failed"), failure);
}

bool ParameterSettingHelper::isClosedToWrites() const
{
    return rowValues.contains(readOnlyMark) || rowValues.contains(tr("Reserved"));
}

void ParameterSettingHelper::getParamValue()
{
    takeValue(true);
}

void ParameterSettingHelper::writeToServo()
{
    takeValue(false);
}

void ParameterSettingHelper::takeValue(bool isWriteRAM)
{
    if (isClosedToWrites()) {
        close();
        return;
    }
    if (!isLinkOpen()) {
        // The words say USB whatever the link is.
        showMessage(tr("Fail to connect to the device via USB!"));
        return;
    }
    const QString text = valueEdit->text();
    const ValueCheck check = checkValue(rowValues, text);
    if (check.verdict != ValueCheck::Verdict::Accepted) {
        refuse(check);
        return;
    }
    emit writeDataToServo(writeRecord(rowValues, text), isWriteRAM);
    emit setParamValue(displayText(rowValues, text, isWriteRAM), isWriteRAM);
    close();
}

void ParameterSettingHelper::refuse(const ValueCheck &check)
{
    // The slips of these texts are wanted.
    switch (check.verdict) {
    case ValueCheck::Verdict::AboveMaximum:
        showMessage(tr("Input value execteeds the range!\n \nMax:%1").arg(check.limit));
        break;
    case ValueCheck::Verdict::BelowMinimum:
        showMessage(tr("Input value execteeds the range!\n \nMin:%1").arg(check.limit));
        break;
    default:
        QMessageBox::critical(this, QString(), tr("Paramter Value Input Error!"), QMessageBox::Ok);
        break;
    }
}
