// SPDX-License-Identifier: GPL-3.0-or-later
// The plain message box with which windows tell the user something. Main thread.
#pragma once

#include <QString>

// Shows the text and waits for the answer. An event loop runs meanwhile: the caller may be gone afterwards.
void showMessage(const QString &text);
