// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/didocatalogue.h"

#include <QXmlStreamReader>

#include <algorithm>

namespace {

constexpr int numberDigits = 2;

QList<DidoFunction> *listOf(DidoCatalogue *catalogue, const QString &group)
{
    if (group == QLatin1String("DI Information"))
        return &catalogue->inputs;
    if (group == QLatin1String("DO Information"))
        return &catalogue->outputs;
    return nullptr;
}

} // namespace

DidoCatalogue readDidoCatalogue(const QByteArray &content)
{
    DidoCatalogue catalogue;
    QList<DidoFunction> *list = nullptr;
    DidoFunction row;
    QXmlStreamReader xml(content);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isEndElement() && xml.name() == QLatin1String("parameter")) {
            if (list)
                list->append(row);
            row = DidoFunction();
        }
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("group"))
            list = listOf(&catalogue, xml.attributes().value(QLatin1String("name")).toString());
        else if (xml.name() == QLatin1String("sequence"))
            row.sequence = xml.readElementText();
        else if (xml.name() == QLatin1String("symbol"))
            row.symbol = xml.readElementText();
        else if (xml.name() == QLatin1String("function"))
            row.function = xml.readElementText();
    }
    return catalogue;
}

int indexOfFunction(const QList<DidoFunction> &functions, const QByteArray &data)
{
    // Runs for 32 registers in each poll cycle, so nothing is made for each function.
    const QString padded = QString::fromLatin1(data.toHex()).mid(numberDigits);
    const QString plain = padded.startsWith(QLatin1Char('0')) ? padded.mid(1) : padded;
    const auto found =
        std::find_if(functions.begin(), functions.end(), [&padded, &plain](const DidoFunction &function) {
            return function.sequence == padded || function.sequence == plain;
        });
    return int(found - functions.begin());
}
