// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/offlinenotice.h"

#include "link/linkstate.h"
#include "widgets/messages.h"

#include <QCoreApplication>

bool isOnlineOrTold()
{
    if (isLinkOpen())
        return true;
    // Deliberate: the words say USB whatever the link is.
    showMessage(QCoreApplication::translate("ParameterTable", "Fail to connect to the device via USB!"));
    return false;
}
