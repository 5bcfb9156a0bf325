// SPDX-License-Identifier: GPL-3.0-or-later
// How a combo box of a form and the value text follow each other. Pure functions; any thread.
#pragma once

#include "parameter/bitfieldforms.h"

// Index that a combo box of this many options shows for the value text: its digits read in the field's base.
// 0 where they are no number in that base or name no option.
int shownIndex(const BitField &field, const QString &text, int optionCount);

// The digits up to that of the row's maximum, as options of a field whose row has no lines for it; empty
// where the maximum is no hexadecimal text or allows 0 alone there.
QStringList plainDigits(const BitField &field, const QString &maximum);

// The value text after a choice in the combo box of this object name. An empty text counts as "0x0000"; a
// name without a rule leaves the text as it is.
QString chosenText(const QString &text, const QString &name, int index);
