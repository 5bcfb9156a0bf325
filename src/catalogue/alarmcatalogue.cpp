// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/alarmcatalogue.h"

#include <QXmlStreamReader>

namespace {

constexpr int codeDigits = 2;

// A text element of a row, whichever of the two classes it belongs to.
bool isField(const QStringRef &element)
{
    static const QStringList fields{QStringLiteral("alarm_code"),   QStringLiteral("alarm_name"),
                                    QStringLiteral("alarm_cauese"), QStringLiteral("alarm_corrective"),
                                    QStringLiteral("error_code"),   QStringLiteral("error_name"),
                                    QStringLiteral("error_cauese"), QStringLiteral("error_corrective")};
    return fields.contains(element.toString());
}

QString numberText(int number)
{
    return QString::number(number).rightJustified(codeDigits, QLatin1Char('0'));
}

QList<QStringList> *listOf(AlarmCatalogue *catalogue, const QString &group)
{
    if (group == QLatin1String("Alarm Information"))
        return &catalogue->alarms;
    if (group == QLatin1String("Error Information"))
        return &catalogue->faults;
    return nullptr;
}

} // namespace

AlarmCatalogue readAlarmCatalogue(const QByteArray &content)
{
    AlarmCatalogue catalogue;
    QList<QStringList> *list = nullptr;
    QStringList row;
    QXmlStreamReader xml(content);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isEndElement() && xml.name() == QLatin1String("parameter")) {
            if (list && !row.isEmpty())
                list->append(row);
            row.clear();
        }
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("group")) {
            list = listOf(&catalogue, xml.attributes().value(QLatin1String("name")).toString());
        } else if (isField(xml.name())) {
            row.append(xml.readElementText());
        }
    }
    return catalogue;
}

QString alarmCode(int number)
{
    return QLatin1String("AL-0") + numberText(number);
}

QString faultCode(int number)
{
    return QLatin1String("Er-0") + numberText(number);
}
