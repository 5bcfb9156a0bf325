// SPDX-License-Identifier: GPL-3.0-or-later
// The functions that an input or an output can have: DIDO_*.xml. Pure functions; any thread.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

struct DidoFunction
{
    QString sequence; // the function's number, in decimal
    QString symbol;
    QString function; // what it does, in the catalogue's language
};

struct DidoCatalogue
{
    QList<DidoFunction> inputs;
    QList<DidoFunction> outputs;
};

// An error of the XML ends the read after the rows before it.
DidoCatalogue readDidoCatalogue(const QByteArray &xml);

// Index of the function whose number stands in the register, or the length of the list. The number is
// binary-coded decimal in the low byte: 0x0012 is function 12, and 0x001F none.
int indexOfFunction(const QList<DidoFunction> &functions, const QByteArray &data);
