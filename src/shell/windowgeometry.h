// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the main window, its frame included, on the screen. Main thread.
#pragma once

#include <QMargins>
#include <QRect>

class QWidget;

// The geometry, told without the frame, made no larger than the available area leaves it beside the frame,
// and moved so that window and frame lie inside. All in device-independent pixels.
QRect fittedGeometry(const QRect &geometry, const QMargins &frame, const QRect &available);

// Fits a window that is not yet shown into its screen: at once, with the frame that the style tells of, and
// again when it is shown and its real frame is known. A window that has room is left where it is, and so is
// one that has been given another size meanwhile or fills the screen.
void keepOnScreen(QWidget *window);
