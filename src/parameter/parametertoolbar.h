// SPDX-License-Identifier: GPL-3.0-or-later
// The tool bar of the parameter editor. Free function; main thread.
#pragma once

class ParameterEditor;
class QToolBar;

// The bar, whose actions call the editor's slots; owned by the widget that it is put into.
QToolBar *makeParameterToolBar(ParameterEditor *editor);
