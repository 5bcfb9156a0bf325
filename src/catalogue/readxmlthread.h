// SPDX-License-Identifier: GPL-3.0-or-later
// Parses the parameter catalogue of the current language once and hands its rows out one at a time.
// Owned by a ParameterEditor on the main thread; run() is the parse, and all it produces travels by value.
#pragma once

#include <QStringList>
#include <QThread>

class ReadXmlThread : public QThread
{
    Q_OBJECT

public:
    explicit ReadXmlThread(QObject *parent = nullptr);

signals:
    // One row of the group with this index, 0 to 11. In a catalogue of the right form values holds 18
    // strings: name, code, eleven flag marks, default, unit, min, max, description; description the detail
    // lines.
    void readXml(int index, QStringList values, QStringList description);

protected:
    void run() override;
};
