// SPDX-License-Identifier: GPL-3.0-or-later
// An empty working directory for a test, so that its settings.ini is its own. Main thread.
#pragma once

#include <QString>
#include <QTemporaryDir>

class TestDirectory
{
public:
    TestDirectory();
    ~TestDirectory();

    // Removes what is in it; the working directory stays.
    void clear() const;
    QString path() const { return directory.path(); }
    // Writes the language key of the settings.
    void setLanguage(const QString &language) const;

private:
    QString before;
    QTemporaryDir directory;
};
