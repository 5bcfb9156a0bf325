// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/parametercatalogue.h"

#include "catalogue/parametergroups.h"

#include <QXmlStreamReader>

namespace {

class Reader
{
public:
    Reader(const QByteArray &bytes, const CatalogueRowHandler &rowHandler)
        : xml(bytes)
        , handler(rowHandler)
    {
    }

    void read()
    {
        while (!xml.atEnd()) {
            switch (xml.readNext()) {
            case QXmlStreamReader::StartElement:
                startElement();
                break;
            case QXmlStreamReader::EndElement:
                if (xml.name() == QLatin1String("parameter"))
                    endParameter();
                break;
            default:
                break;
            }
        }
    }

private:
    QString attribute(const char *name) const
    {
        return xml.attributes().value(QLatin1String(name)).toString();
    }

    void startElement()
    {
        const QString name = xml.name().toString();
        if (name == QLatin1String("group")) {
            const int index = parameterGroupIndex(attribute("name"));
            if (index >= 0)
                group = index;
        } else if (name == QLatin1String("description")) {
            values.append(attribute("description"));
        } else if (name == QLatin1String("parameter")) {
            values.append(attribute("name"));
        } else if (name == QLatin1String("function_value")) {
            values.append(attribute("code"));
        } else if (name == QLatin1String("detailed_description_value")) {
            readText(details);
        } else if (isTextElement(name)) {
            readText(values);
        }
    }

    static bool isTextElement(const QString &name)
    {
        static const QStringList names{QStringLiteral("code"), QStringLiteral("min"),
                                       QStringLiteral("max"),  QStringLiteral("value"),
                                       QStringLiteral("unit"), QStringLiteral("parameter_description")};
        return names.contains(name);
    }

    void readText(QStringList &list)
    {
        const QString text = xml.readElementText();
        // A text that the end of a broken file has cut off belongs to no row.
        if (!xml.hasError())
            list.append(text);
    }

    void endParameter()
    {
        if (group >= 0)
            handler(group, values, details);
        values.clear();
        details.clear();
    }

    QXmlStreamReader xml;
    const CatalogueRowHandler &handler;
    int group = -1;
    QStringList values;
    QStringList details;
};

} // namespace

void readParameterCatalogue(const QByteArray &xml, const CatalogueRowHandler &handler)
{
    Reader(xml, handler).read();
}
