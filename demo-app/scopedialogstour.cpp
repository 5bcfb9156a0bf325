// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/scopetour.h"

#include "demo-app/tour.h"
#include "scope/channelconfig.h"
#include "scope/channelpanels.h"
#include "scope/scope.h"
#include "scope/scopesidepanel.h"
#include "support/scopedriver.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTest>

namespace {

ScopeDriver scope()
{
    return ScopeDriver(Tour::visible<Scope>());
}

void addColours(Tour *tour)
{
    const auto addDialog = [tour](const QString &name) {
        tour->add({name, [] { return Tour::visible<QColorDialog>() != nullptr; },
                   [] { Tour::visible<QColorDialog>()->reject(); }, QString(),
                   QStringLiteral("scope/scopewindow.cpp QColorDialog")});
    };
    tour->addClosed(QStringLiteral("colour of the background can be chosen"),
                    [] { scope().click(ScopeToolBar::BackgroundColor); });
    addDialog(QStringLiteral("colours of the background are shown"));
    tour->addClosed(QStringLiteral("colour of a channel can be chosen"),
                    [] { QTest::mouseClick(scope().channels()->channel(0)->colorButton, Qt::LeftButton); });
    addDialog(QStringLiteral("colours of a channel are shown"));
}

void addZoomHints(Tour *tour)
{
    tour->addClosed(QStringLiteral("fine tuning can be switched on"), [] {
        const ScopeSidePanel *const panel = scope().sidePanel();
        panel->tuningBox->setChecked(true);
        panel->tuningBoxes.at(ScopeSidePanel::timeAxisBox)->setChecked(false);
        panel->tuningBoxes.at(ScopeSidePanel::valueAxisBox)->setChecked(false);
        scope().click(ScopeToolBar::ZoomIn);
    });
    tour->addMessage(QStringLiteral("an axis is to be chosen"), "scope/plotdialogs.cpp");
    tour->add({QStringLiteral("a channel is to be chosen"),
               [] { return QApplication::activeModalWidget() != nullptr; },
               [] { QApplication::activeModalWidget()->close(); }});
    tour->addClosed(QStringLiteral("fine tuning can be switched off"),
                    [] { scope().sidePanel()->tuningBox->setChecked(false); });
}

void addFiles(Tour *tour)
{
    const QString folder = tour->pictureFolder() + QStringLiteral("/record");
    const QString wrong = tour->pictureFolder() + QStringLiteral("/wrong.txt");
    tour->addClosed(QStringLiteral("picture of the plot can be saved"),
                    [] { scope().click(ScopeToolBar::PrintScreen); });
    tour->addFileDialog(QStringLiteral("a name for the picture is asked for"), "scope/plotdialogs.cpp",
                        tour->pictureFolder() + QStringLiteral("/plot-alone.png"));
    tour->addMessage(QStringLiteral("the picture has been saved"), "scope/plotdialogs.cpp");
    tour->addClosed(QStringLiteral("record can be saved"), [folder] {
        QDir().mkpath(folder);
        scope().click(ScopeToolBar::Save);
    });
    tour->addFileDialog(QStringLiteral("a folder for the record is asked for"), "scope/scopefiles.cpp",
                        folder);
    tour->addMessage(QStringLiteral("the record has been saved"), "scope/scopefiles.cpp");
    tour->addClosed(QStringLiteral("a record can be opened"), [wrong] {
        QFile file(wrong);
        if (file.open(QIODevice::WriteOnly))
            file.write("no record\n");
        file.close();
        scope().click(ScopeToolBar::Open);
    });
    tour->addFileDialog(QStringLiteral("a record to open is asked for"), "scope/scopefiles.cpp", wrong);
    tour->addMessage(QStringLiteral("a file that is no record is refused"), "scope/scope.cpp");
}

} // namespace

void addScopeDialogsTour(Tour *tour)
{
    addColours(tour);
    addZoomHints(tour);
    addFiles(tour);
}
