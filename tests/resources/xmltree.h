// SPDX-License-Identifier: GPL-3.0-or-later
// An XML text as a tree, read apart from the product's own readers. Any thread.
#pragma once

#include <QFile>
#include <QList>
#include <QStringList>
#include <QXmlStreamReader>

struct XmlNode
{
    QString tag;
    QXmlStreamAttributes attributes;
    QString text;
    QList<XmlNode> children;

    QString name() const { return attributes.value(QLatin1String("name")).toString(); }
    QString code() const { return attributes.value(QLatin1String("code")).toString(); }

    QStringList childTags() const
    {
        QStringList tags;
        for (const XmlNode &node : children)
            tags.append(node.tag);
        return tags;
    }

    // The first child of that tag, an empty node where there is none.
    XmlNode child(const QString &childTag) const
    {
        for (const XmlNode &node : children) {
            if (node.tag == childTag)
                return node;
        }
        return {};
    }
    QString childText(const char *childTag) const { return child(QLatin1String(childTag)).text; }
};

struct XmlFile
{
    XmlNode root;
    bool hasError = true;
};

inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Reads from a start element to its end; false when an error comes before the end.
inline bool readXmlNode(QXmlStreamReader *xml, XmlNode *node)
{
    node->tag = xml->name().toString();
    node->attributes = xml->attributes();
    while (!xml->atEnd()) {
        xml->readNext();
        if (xml->isEndElement())
            return true;
        if (xml->isCharacters())
            node->text += xml->text();
        if (xml->isStartElement()) {
            XmlNode inner;
            if (!readXmlNode(xml, &inner))
                return false;
            node->children.append(inner);
        }
    }
    return false;
}

// Elements that an error cuts short are left out, those before it stay.
inline XmlFile readXmlFile(const QString &path)
{
    const QByteArray content = contentOf(path);
    QXmlStreamReader xml(content);
    XmlFile file;
    if (xml.readNextStartElement())
        readXmlNode(&xml, &file.root);
    while (!xml.atEnd())
        xml.readNext();
    file.hasError = xml.hasError();
    return file;
}
