// SPDX-License-Identifier: GPL-3.0-or-later
// The parameter catalogues of both languages and their rows. Any thread.
#pragma once

#include "xmltree.h"

#include <QRegularExpression>
#include <QTest>

namespace parameterfiles {

inline QString catalogue(const char *language)
{
    return QStringLiteral(":/parameter/parameter/parameters_%1.xml").arg(QLatin1String(language));
}

inline QList<XmlNode> rowsOf(const QString &path)
{
    QList<XmlNode> rows;
    const XmlFile file = readXmlFile(path);
    for (const XmlNode &group : file.root.children)
        rows += group.children;
    return rows;
}

// "300..302 304~305" is Pn-300, Pn-301, Pn-302 and Pn-304~Pn-305; "304-305" is Pn-304-Pn-305.
inline QStringList codes(const QString &text)
{
    QStringList list;
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &word : words) {
        const int dots = word.indexOf(QLatin1String(".."));
        if (dots < 0) {
            QString code = QLatin1String("Pn-") + word;
            list.append(code.replace(QRegularExpression(QStringLiteral("([0-9])([~-])")),
                                     QStringLiteral("\\1\\2Pn-")));
            continue;
        }
        const QChar group = word.at(0);
        for (int number = word.midRef(1, 2).toInt(); number <= word.rightRef(2).toInt(); ++number)
            list.append(QStringLiteral("Pn-%1%2").arg(group).arg(number, 2, 10, QLatin1Char('0')));
    }
    return list;
}

inline void addLanguages()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("English") << catalogue("en_US");
    QTest::newRow("Chinese") << catalogue("zh_CN");
}

} // namespace parameterfiles
