// SPDX-License-Identifier: GPL-3.0-or-later
// Combo boxes that are narrower than their texts. Main thread.
#pragma once

class QComboBox;

// The box asks for room for so many characters only. Its list opens as wide as its texts of now, and its tool
// tip tells the choice in full, however it was set.
void makeNarrow(QComboBox *box, int characters);
