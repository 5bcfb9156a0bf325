// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/parametertour.h"

#include "demo-app/tour.h"
#include "parameter/bitfieldforms.h"
#include "parameter/parameterbatch.h"
#include "parameter/parametereditor.h"
#include "parameter/parametersettinghelper.h"
#include "parameter/parametertable.h"
#include "support/batchdriver.h"
#include "support/editordriver.h"
#include "support/toolclick.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QSet>
#include <QTest>

namespace {

ParameterEditor *editor()
{
    return Tour::visible<ParameterEditor>();
}

void addHelper(Tour *tour, const QString &kind, const QString &code)
{
    tour->addClosed(QStringLiteral("row of %1 can be double-clicked").arg(code),
                    [code] { EditorDriver(editor()).openHelper(0, code); });
    tour->add({QStringLiteral("setting helper opens on a %1 row").arg(kind),
               [] { return Tour::visible<ParameterSettingHelper>() != nullptr; },
               [] { Tour::visible<ParameterSettingHelper>()->close(); }, QStringLiteral("07-helper-") + kind,
               QStringLiteral("parameter/parametersettinghelper.cpp ParameterSettingHelper"),
               QStringLiteral("helper-") + kind});
}

// Codes with a form of their own on a page, one of each form.
QStringList codesOfForms(const EditorDriver &driver, int page)
{
    QStringList codes;
    QSet<const BitFieldForm *> seen;
    for (int row = 0; row < driver.page(page)->rowCount(); ++row) {
        const QString code = driver.page(page)->code(row);
        const BitFieldForm *const form = bitFieldForm(code);
        if (form && !seen.contains(form))
            codes.append(code);
        seen.insert(form);
    }
    return codes;
}

// Opens the helper of every form and looks it over.
void lookAtForms(Tour *tour, int page)
{
    const EditorDriver driver(editor());
    const QStringList codes = codesOfForms(driver, page);
    for (const QString &code : codes) {
        ParameterSettingHelper *const helper = driver.openHelper(page, code);
        if (!helper) {
            tour->fail(QStringLiteral("no setting helper opens for ") + code);
            return;
        }
        QCoreApplication::processEvents();
        tour->look(QStringLiteral("setting helper of ") + code);
        helper->close();
    }
}

void addHelpers(Tour *tour)
{
    addHelper(tour, QStringLiteral("hexadecimal"), QStringLiteral("Pn-004"));
    addHelper(tour, QStringLiteral("decimal"), QStringLiteral("Pn-007"));
    addHelper(tour, QStringLiteral("read-only"), QStringLiteral("Pn-000"));
    for (int page = 0; page < 12; ++page)
        tour->addClosed(QStringLiteral("setting helpers of page %1 can be looked at").arg(page + 1),
                        [tour, page] { lookAtForms(tour, page); });
    tour->addClosed(QStringLiteral("a value can be typed"), [] {
        ParameterSettingHelper *const helper = EditorDriver(editor()).openHelper(0, QStringLiteral("Pn-007"));
        helper->findChild<QLineEdit *>()->setText(QStringLiteral("99999"));
        helper->getParamValue();
    });
    tour->addMessage(QStringLiteral("a value out of range is refused"),
                     "parameter/parametersettinghelper.cpp", QStringLiteral("helper-refused"));
    tour->add({QStringLiteral("setting helper can be closed"), [] { return !Tour::visible<QMessageBox>(); },
               [] { Tour::visible<ParameterSettingHelper>()->close(); }});
}

void addRowMenu(Tour *tour)
{
    tour->addClosed(QStringLiteral("a row can be right-clicked"), [] {
        const EditorDriver driver(editor());
        const QPoint place = driver.showValue(0, QStringLiteral("Pn-007"));
        const QWidget *const viewport = driver.page(0)->viewport();
        QTest::mouseClick(driver.page(0)->viewport(), Qt::LeftButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QCoreApplication::sendEvent(driver.page(0)->viewport(), &event);
    });
    tour->add({QStringLiteral("menu of a row is open"), [] { return Tour::visible<QMenu>() != nullptr; },
               [] { Tour::visible<QMenu>()->close(); }, QStringLiteral("08-row-menu"),
               QStringLiteral("parameter/parametertable.cpp QMenu")});
}

BatchDriver batch()
{
    return BatchDriver(Tour::visible<ParameterBatch>());
}

void addBatchRows(Tour *tour)
{
    const QStringList codes{"Pn-007", "Pn-100", "Pn-610", "Pn-702", "Pn-A04"};
    for (int row = 0; row < codes.size(); ++row) {
        // A typed code is taken over by the event loop, so each row is a step of its own.
        tour->add({QStringLiteral("batch window shows %1 rows").arg(row),
                   [row, codes] {
                       const ParameterBatch *const window = Tour::visible<ParameterBatch>();
                       return window && window->codes() == codes.mid(0, row) && !batch().openEditor();
                   },
                   [tour, row, codes] {
                       batch().click(BatchDriver::NewRowTool);
                       if (!batch().type(row, BatchDriver::Code, codes.at(row)))
                           tour->fail(QStringLiteral("the code of a row can't be typed"));
                   }});
    }
    tour->add({QStringLiteral("batch window shows the rows that were typed"),
               [] {
                   const ParameterBatch *const window = Tour::visible<ParameterBatch>();
                   return window->codes().size() == 5 && window->codes().last() == QLatin1String("Pn-A04") &&
                          window->text(4, ParameterBatch::UnitColumn) == QLatin1String("pp");
               },
               [] { batch().click(BatchDriver::ReadTool); }});
    tour->addMessage(QStringLiteral("rows of the batch window have been read"),
                     "parameter/parameterrundisplay.cpp");
    tour->add({QStringLiteral("batch window shows what the drive holds beside what it would write"),
               [] {
                   return !Tour::visible<QMessageBox>() &&
                          batch().text(0, BatchDriver::Real) == batch().text(0, BatchDriver::Value);
               },
               [] { batch().click(BatchDriver::SaveTool); }, QStringLiteral("10-batch"),
               QStringLiteral("parameter/parameterbatch.cpp ParameterBatch"), QStringLiteral("batch")});
}

void addBatchFiles(Tour *tour)
{
    const char *const source = "parameter/parameterbatchcontrol.cpp";
    tour->addFileDialog(QStringLiteral("a name for the list is asked for"), source,
                        tour->pictureFolder() + QStringLiteral("/list.csv"));
    tour->addMessage(QStringLiteral("the list has been saved"), source);
    tour->addClosed(QStringLiteral("a list can be opened"), [] { batch().click(BatchDriver::OpenTool); });
    tour->addFileDialog(QStringLiteral("a list to open is asked for"), source, QString());
    tour->addClosed(QStringLiteral("batch window can be closed"),
                    [] { Tour::visible<ParameterBatch>()->close(); });
}

} // namespace

void addParameterWindowsTour(Tour *tour)
{
    addHelpers(tour);
    addRowMenu(tour);
    tour->addClosed(QStringLiteral("batch window can be opened"), [tour] {
        if (!clickTool(editor(), "editAction"))
            tour->fail(QStringLiteral("the editor does not show \"edit parameter\""));
    });
    addBatchRows(tour);
    addBatchFiles(tour);
}
