// SPDX-License-Identifier: GPL-3.0-or-later
// Lists of the batch window in files. Main thread.
#pragma once

#include "testfiles.h"

#include "parameter/loadededitor.h"
#include "support/modalanswers.h"

namespace batchlists {

inline const QString listName = QStringLiteral("list.csv");
inline const QByteArray heads("Function code,\xE2\x98\x85,\xE2\x96\xA0,\xE2\x97\x8F,\xE2\x96\xB2,H,"
                              "Value,Uint,Min,Max,Default,Description,Real,\n");

inline void open(const LoadedEditor &loaded)
{
    const ModalAnswers noBox;
    loaded.list().openFile(listName);
}

} // namespace batchlists
