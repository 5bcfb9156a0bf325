// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/scopesidepanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int groupSpacing = 10; // pixels
constexpr int editWidth = 80;    // pixels
constexpr int rowSpacing = 2;    // pixels
constexpr int margin = 5;        // pixels

// Close rows, so that the three groups fit into the smallest window.
void setClose(QLayout *layout)
{
    layout->setSpacing(rowSpacing);
    layout->setContentsMargins(margin, rowSpacing, margin, rowSpacing);
}

template <std::size_t count>
QString checkedText(const std::array<QRadioButton *, count> &buttons)
{
    for (const QRadioButton *button : buttons) {
        if (button->isChecked())
            return button->text();
    }
    return {};
}

// The radio buttons under each other in a group of their own, the first one checked.
template <std::size_t count>
QGroupBox *radioGroup(const QString &title, const std::array<QString, count> &texts,
                      std::array<QRadioButton *, count> *buttons)
{
    auto *group = new QGroupBox(title);
    auto *column = new QVBoxLayout(group);
    setClose(column);
    for (std::size_t i = 0; i < count; ++i) {
        buttons->at(i) = new QRadioButton(texts.at(i));
        column->addWidget(buttons->at(i));
    }
    column->addStretch();
    buttons->front()->setChecked(true);
    return group;
}

QLineEdit *narrowEdit(const QString &text)
{
    auto *edit = new QLineEdit(text);
    edit->setFixedWidth(editWidth);
    return edit;
}

} // namespace

ScopeSidePanel::ScopeSidePanel(QWidget *parent)
    : QFrame(parent)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(groupSpacing);
    column->addWidget(buildProperties());
    column->addWidget(buildFineTuning());
    column->addWidget(buildStopCondition());
    column->addStretch();
}

QGroupBox *ScopeSidePanel::buildProperties()
{
    auto *group = new QGroupBox(tr("Properties"));
    gridBox = new QCheckBox(tr("Show Grid Line"));
    gridBox->setChecked(true);
    autoAdjustBox = new QCheckBox(tr("Auto adjust the scope display"));
    keepRangeBox = new QCheckBox(tr("Keep current max/min value next start"));

    auto *coordinates = new QGroupBox(tr("When display all data in sceen,"));
    individualButton = new QRadioButton(tr("channels use individual coordinate"));
    sameButton = new QRadioButton(tr("channels use the same coordinate"));
    sameButton->setChecked(true);
    auto *radios = new QVBoxLayout(coordinates);
    setClose(radios);
    radios->addWidget(individualButton);
    radios->addWidget(sameButton);

    auto *column = new QVBoxLayout(group);
    setClose(column);
    for (QCheckBox *box : {gridBox, autoAdjustBox, keepRangeBox})
        column->addWidget(box);
    column->addWidget(coordinates);
    return group;
}

QGroupBox *ScopeSidePanel::buildFineTuning()
{
    struct Face
    {
        QString text;
        const char *name;
        int row;
        int column;
    };
    const std::array<Face, 6> faces{{{tr("CH1"), "CH1", 0, 0},
                                     {tr("CH2"), "CH2", 1, 0},
                                     {tr("CH3"), "CH3", 2, 0},
                                     {tr("CH4"), "CH4", 3, 0},
                                     {tr("zoom Time-Axis"), "Time-Axis", 0, 1},
                                     {tr("Zoom Value-axis"), "Value-axis", 1, 1}}};

    auto *group = new QGroupBox(tr("Fine Tuning"));
    tuningBox = new QCheckBox(tr("Enable Fine Tuning"));
    auto *grid = new QGridLayout;
    for (std::size_t i = 0; i < faces.size(); ++i) {
        tuningBoxes.at(i) = new QCheckBox(faces.at(i).text);
        tuningBoxes.at(i)->setObjectName(QLatin1String(faces.at(i).name));
        tuningBoxes.at(i)->setEnabled(false);
        grid->addWidget(tuningBoxes.at(i), faces.at(i).row, faces.at(i).column);
    }
    grid->setSpacing(rowSpacing);
    auto *column = new QVBoxLayout(group);
    setClose(column);
    column->addWidget(tuningBox);
    column->addLayout(grid);
    return group;
}

QGroupBox *ScopeSidePanel::buildStopCondition()
{
    auto *group = new QGroupBox(tr("Stop Condition"));
    stopBox = new QCheckBox(tr("Enable Stop Condition"));

    auto *choices = new QHBoxLayout;
    choices->addWidget(
        radioGroup<4>(tr("Channel"), {tr("CH1"), tr("CH2"), tr("CH3"), tr("CH4")}, &stopChannelButtons));
    choices->addWidget(radioGroup<3>(tr("Operation"),
                                     {QStringLiteral(">="), QStringLiteral("="), QStringLiteral("<=")},
                                     &stopOperationButtons));

    stopValueEdit = narrowEdit(QStringLiteral("0"));
    lastForEdit = narrowEdit(QStringLiteral("20000"));
    auto *fields = new QGridLayout;
    fields->addWidget(new QLabel(tr("Stop Value:")), 0, 0);
    fields->addWidget(stopValueEdit, 0, 1);
    fields->addWidget(new QLabel(tr("Condition satisfied,last")), 1, 0);
    fields->addWidget(lastForEdit, 1, 1);
    fields->addWidget(new QLabel(QStringLiteral("ms")), 1, 2);

    auto *column = new QVBoxLayout(group);
    setClose(column);
    column->addWidget(stopBox);
    column->addLayout(choices);
    column->addLayout(fields);
    setStopInputsEnabled(false);
    return group;
}

void ScopeSidePanel::setStopInputsEnabled(bool enabled)
{
    for (QRadioButton *button : stopChannelButtons)
        button->setEnabled(enabled);
    for (QRadioButton *button : stopOperationButtons)
        button->setEnabled(enabled);
    stopValueEdit->setEnabled(enabled);
    lastForEdit->setEnabled(enabled);
}

QString ScopeSidePanel::stopChannelText() const
{
    return checkedText(stopChannelButtons);
}

QString ScopeSidePanel::stopOperationText() const
{
    return checkedText(stopOperationButtons);
}
