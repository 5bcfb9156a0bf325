// SPDX-License-Identifier: GPL-3.0-or-later
// The progress dialog of a batch transfer, and a drive that stays silent. Main thread.
#pragma once

#include "parameter/loadededitor.h"

#include <QProgressDialog>

namespace batchtransfers {

inline QProgressDialog *progress(const LoadedEditor &loaded)
{
    return loaded.editor->findChild<QProgressDialog *>();
}

inline QByteArray silent(const QByteArray &, const QByteArray &)
{
    return QByteArray();
}

} // namespace batchtransfers
