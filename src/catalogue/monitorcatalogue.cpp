// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/monitorcatalogue.h"

#include <QXmlStreamReader>

QList<MonitorItem> readMonitorItems(const QByteArray &content)
{
    QList<MonitorItem> items;
    MonitorItem item;
    QXmlStreamReader xml(content);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isEndElement() && xml.name() == QLatin1String("parameter")) {
            items.append(item);
            item = MonitorItem();
        }
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("parameter"))
            item.name = xml.attributes().value(QLatin1String("name")).toString();
        else if (xml.name() == QLatin1String("code"))
            item.code = xml.readElementText();
        else if (xml.name() == QLatin1String("unit"))
            item.unit = xml.readElementText();
    }
    return items;
}
