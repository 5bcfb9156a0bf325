// SPDX-License-Identifier: GPL-3.0-or-later
// Tells which of a widget's texts do not fit into the room that they are drawn in. Main thread; free
// functions that look at widgets only.
#pragma once

#include <QStringList>

class QWidget;

// The texts that this widget draws itself and that are cut off, each with a word on where it stands. A text
// that is told in full by a tool tip may be cut, and so may what a person can scroll or has typed to the end
// of a field that has the focus.
QStringList cutTexts(const QWidget *widget);

// A text that the widget draws itself, empty for none; of lists and tables none, for they scroll.
QString shownText(const QWidget *widget);
