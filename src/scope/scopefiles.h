// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs around the scope's record: where it goes, and which one is replayed. Main thread.
#pragma once

#include <QString>

class QWidget;
class ScopeRecord;

// Asks for a folder and copies the record there; tells what could not be copied.
void saveScopeRecord(ScopeRecord *record, QWidget *parent);

// Asks for a record file to replay; empty when the user has thought better of it.
QString askForScopeFile();
