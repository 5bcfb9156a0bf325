// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterlegend.h"

#include "parameter/parametersymbols.h"
#include "widgets/sunkenlabel.h"

#include <QHBoxLayout>
#include <QLabel>

ParameterLegend::ParameterLegend(QWidget *parent)
    : QWidget(parent)
{
    auto *const row = new QHBoxLayout(this);
    row->setSpacing(2);
    row->setContentsMargins(0, 0, 0, 0);
    const auto symbols = parameterSymbols();
    for (const ParameterSymbol &symbol : symbols) {
        auto *const mark = new QLabel(symbol.symbol);
        mark->setFont(symbol.font);
        mark->setAlignment(Qt::AlignCenter);
        mark->setStyleSheet(QStringLiteral("color:%1").arg(symbol.colour.name()));
        row->addWidget(mark);
        auto *const text = new SunkenLabel(symbol.legend, QString(), 9);
        text->setWordWrap(true); // else the row would make a narrow window scroll
        row->addWidget(text, 1);
    }
}
