// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/monitorpanel.h"

#include "catalogue/cataloguefile.h"
#include "settings/applanguage.h"

#include <QHeaderView>
#include <QMessageBox>
#include <QTableWidget>

namespace {

constexpr int rowHeight = 18; // pixels
constexpr int fontSize = 8;   // points; all panels fit into a main window of 1024 by 768

} // namespace

QFont monitorFont()
{
    QFont font;
    font.setFamily(QStringLiteral("微软雅黑"));
    font.setPointSize(fontSize);
    return font;
}

QByteArray loadMonitorCatalogue(QWidget *parent, const QString &stem, const CatalogueWords &words)
{
    const CatalogueFile file = readCatalogueFile(languageFile(stem));
    if (file.failure == CatalogueFile::Failure::Missing)
        QMessageBox::warning(parent, words.title, words.missing);
    else if (file.failure == CatalogueFile::Failure::Unreadable)
        QMessageBox::warning(parent, words.title, words.unreadable);
    return file.content;
}

void makePanelTable(QTableWidget *table)
{
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setFocusPolicy(Qt::NoFocus);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    table->verticalHeader()->setMinimumSectionSize(rowHeight);
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->horizontalHeader()->setHighlightSections(false);
}

QTableWidgetItem *centredItem(const QString &text)
{
    auto *item = new QTableWidgetItem(text);
    item->setTextAlignment(Qt::AlignCenter);
    return item;
}

void setItemText(QTableWidgetItem *item, const QString &text)
{
    if (item->text() != text)
        item->setText(text);
}
