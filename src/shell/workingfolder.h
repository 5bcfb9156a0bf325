// SPDX-License-Identifier: GPL-3.0-or-later
// The folder that the program works in: which processes share its settings file, and whether it is a place
// for the user's files. Main thread.
#pragma once

#include <QLockFile>

#include <memory>

// The mark of this process there; it goes with the object, and counts no more once the process is dead.
std::unique_ptr<QLockFile> markWorkingFolder();

// True while another process that lives has its mark in the current folder.
bool isWorkingFolderShared();

// Where the current folder is one of settings alone, as with the installed program, file dialogs that are
// given no folder begin in the user's documents.
void keepDialogsOutOfSettings();
