// SPDX-License-Identifier: GPL-3.0-or-later
// The twelve pages of the editor as what is written, filed and printed: rows of texts, wherever they stand. A
// value over tables that it does not own. Main thread; held by the editor and its controllers.
#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

class ParameterTable;

class ParameterPages
{
public:
    // Where a parameter stands.
    struct Place
    {
        int page = -1; // -1: no page holds it
        int row = -1;

        bool isValid() const { return page >= 0; }
    };

    ParameterPages() = default;
    // The tables in the order of their groups.
    explicit ParameterPages(QList<ParameterTable *> pageTables);

    int count() const { return tables.size(); }
    ParameterTable *at(int page) const { return tables.at(page); }

    // The row that a code names. A text that the catalogue could not spell so names none.
    Place find(const QString &code) const;
    // True when the register that is written for a text, whatever it is, is that of a row.
    bool holdRegisterOf(const QString &code) const;

    // Column heads, that of the codes first.
    QStringList heads() const;
    QStringList rowTexts(const Place &place) const;
    QList<QStringList> rowTexts(int page) const;

    // Records of all rows that a page write takes.
    QList<QStringList> writeRecords() const;
    void resetValueColours() const;

    // The two file formats of all pages.
    QByteArray scpContents() const;
    QByteArray csvContents() const;
    // Puts the values of a .scp file where their places in it say.
    void takeScpContents(const QByteArray &contents) const;

private:
    Place rowOfNumber(int page, int number, const QString &code) const;

    QList<ParameterTable *> tables;
};
