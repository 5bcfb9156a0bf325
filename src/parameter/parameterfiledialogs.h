// SPDX-License-Identifier: GPL-3.0-or-later
// Saving the editor's pages and opening what was saved, with the dialogs that ask for the name. Free
// functions; main thread.
#pragma once

class ParameterPages;
class QWidget;

// Asks for a name and saves the pages in the format that its suffix says.
void saveParameterFile(const ParameterPages &pages, QWidget *window);

// Asks for a name and fills the pages; the drive is not written.
void openParameterFile(const ParameterPages &pages, QWidget *window);
