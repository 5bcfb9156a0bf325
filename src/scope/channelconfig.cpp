// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/channelconfig.h"

#include "widgets/narrowcombo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int visibleItems = 50;
constexpr int dataLength = 15;      // characters
constexpr int fontSize = 10;        // points
constexpr int margin = 4;           // pixels
constexpr int colorButtonSize = 20; // pixels

QLineEdit *readOnlyEdit(const QString &text)
{
    auto *edit = new QLineEdit(text);
    edit->setReadOnly(true);
    edit->setAlignment(Qt::AlignRight);
    return edit;
}

QHBoxLayout *labelledRow(const QString &label, QWidget *widget)
{
    auto *row = new QHBoxLayout;
    row->addWidget(new QLabel(label));
    row->addWidget(widget);
    return row;
}

} // namespace

ChannelConfig::ChannelConfig(const QString &name, const QStringList &items, QWidget *parent)
    : QFrame(parent)
    , groupBox(new QGroupBox)
    , dataEdit(readOnlyEdit(QStringLiteral("0")))
    , comboBox(new QComboBox)
    , checkBox(new QCheckBox(name))
    , colorButton(new QPushButton)
    , typeEdit(readOnlyEdit(QStringLiteral("16bit")))
{
    setObjectName(name);
    checkBox->setObjectName(name);
    comboBox->setObjectName(name);
    colorButton->setObjectName(name);

    checkBox->setChecked(true);
    checkBox->setFont(QFont(QStringLiteral("Tahoma"), fontSize, QFont::Bold));
    dataEdit->setMaxLength(dataLength);
    comboBox->addItems(items);
    comboBox->setMaxVisibleItems(visibleItems);
    makeNarrow(comboBox, 0);
    comboBox->installEventFilter(this);

    auto *head = new QHBoxLayout;
    head->addStretch();
    head->addWidget(checkBox);
    head->addStretch();
    head->addWidget(colorButton);
    auto *column = new QVBoxLayout(groupBox);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(margin);
    column->addLayout(head);
    column->addWidget(comboBox);
    column->addLayout(labelledRow(tr("Data:"), dataEdit));
    column->addLayout(labelledRow(tr("Type:"), typeEdit));
    auto *frame = new QVBoxLayout(this);
    frame->setContentsMargins(0, 0, 0, 0);
    frame->addWidget(groupBox);
}

void ChannelConfig::setColor(const QString &color)
{
    comboBox->setStyleSheet(
        QStringLiteral("QComboBox QAbstractItemView{background-color:%1;min-width:250px}").arg(color));
    const QString edit = QStringLiteral("background-color:#008080;color:%1;").arg(color);
    dataEdit->setStyleSheet(edit);
    typeEdit->setStyleSheet(edit);
    colorButton->setStyleSheet(QStringLiteral("background-color:%1").arg(color));
    colorButton->setFixedSize(colorButtonSize, colorButtonSize);
}

bool ChannelConfig::eventFilter(QObject *object, QEvent *event)
{
    if (object == comboBox && event->type() == QEvent::Wheel) {
        event->setAccepted(false);
        return true;
    }
    return QFrame::eventFilter(object, event);
}
