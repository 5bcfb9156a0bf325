// SPDX-License-Identifier: GPL-3.0-or-later
// What a user may enter for a parameter, judged by the texts of its row alone. Pure functions; any thread.
#pragma once

#include "parameter/parameterrow.h"

#include <QString>
#include <QStringList>

struct ValueCheck
{
    enum class Verdict { Accepted, Malformed, AboveMaximum, BelowMinimum };

    Verdict verdict = Verdict::Accepted;
    QString limit; // the limit that was crossed, as the user is told it; empty for the other verdicts
};

// Judges a text. A hexadecimal row, by its mark or by a "0x" in its maximum, takes "0x" and up to four
// digits; any other row a decimal number with no more fraction digits than its limits have. An empty limit is
// 0.
ValueCheck checkValue(const QStringList &rowValues, const QString &text);

// The accepted text as the table shows it afterwards. isWriteRAM: it goes to the working memory only.
QString displayText(const QStringList &rowValues, const QString &text, bool isWriteRAM);
