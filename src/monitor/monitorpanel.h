// SPDX-License-Identifier: GPL-3.0-or-later
// What the panels of the monitor share: their font, their kind of table, and how they load a catalogue.
// Free functions; main thread.
#pragma once

#include <QByteArray>
#include <QFont>
#include <QString>

class QTableWidget;
class QTableWidgetItem;
class QWidget;

// The font of all panels.
QFont monitorFont();

struct CatalogueWords
{
    QString title;
    QString missing;
    QString unreadable;
};

// The catalogue of the configured language under "<stem>_<language>.xml". A failure is told in a warning box,
// and there is nothing to read.
QByteArray loadMonitorCatalogue(QWidget *parent, const QString &stem, const CatalogueWords &words);

// No selection, no editing, scroll bars as needed, low rows.
void makePanelTable(QTableWidget *table);

QTableWidgetItem *centredItem(const QString &text);

// Polling repeats every value for ever: a cell is drawn anew only when it changes.
void setItemText(QTableWidgetItem *item, const QString &text);
