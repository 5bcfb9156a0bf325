// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/readxmlthread.h"

#include "catalogue/parametercatalogue.h"
#include "settings/applanguage.h"

#include <QFile>

ReadXmlThread::ReadXmlThread(QObject *parent)
    : QThread(parent)
{
}

void ReadXmlThread::run()
{
    QFile file(languageFile(QStringLiteral(":/parameter/parameter/parameters")));
    if (!file.open(QIODevice::ReadOnly))
        return;
    readParameterCatalogue(file.readAll(),
                           [this](int index, const QStringList &values, const QStringList &details) {
                               if (!isInterruptionRequested())
                                   emit readXml(index, values, details);
                           });
}
