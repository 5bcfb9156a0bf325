// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/narrowcombo.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>

namespace {

// A choice may be set without a signal, but it is painted all the same.
class ChoiceTeller : public QObject
{
public:
    explicit ChoiceTeller(QComboBox *box)
        : QObject(box)
        , comboBox(box)
    {
        box->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && comboBox->toolTip() != comboBox->currentText())
            comboBox->setToolTip(comboBox->currentText());
        return QObject::eventFilter(object, event);
    }

private:
    QComboBox *const comboBox;
};

} // namespace

void makeNarrow(QComboBox *box, int characters)
{
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(characters);
    box->view()->setMinimumWidth(box->view()->sizeHintForColumn(0));
    new ChoiceTeller(box);
}
