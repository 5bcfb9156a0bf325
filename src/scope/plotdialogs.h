// SPDX-License-Identifier: GPL-3.0-or-later
// What the plot asks and tells the user in dialogs. An event loop runs in each: the plot may be gone
// afterwards. Main thread.
#pragma once

#include "scope/viewrules.h"

#include <QString>

class QWidget;

// The hint for a zoom without an axis, then the one for a zoom without a channel, as far as they are lacking.
void showZoomInHints(const ViewSwitches &switches);
void showZoomOutHints(const ViewSwitches &switches);

// Asks for a file and saves the widget's picture into it.
void saveWidgetImage(QWidget *widget);
