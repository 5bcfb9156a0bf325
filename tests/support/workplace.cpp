// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/workplace.h"

#include "link/communicationsetting.h"
#include "link/portlist.h"
#include "link/serialport.h"
#include "parameter/parametereditor.h"
#include "parameter/parametersettinghelper.h"
#include "parameter/parametertable.h"
#include "shell/mainwindow.h"
#include "shell/startup.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QProgressDialog>
#include <QPushButton>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>

Workplace::Workplace(const QString &language)
    : linkFolder(new QTemporaryDir)
{
    directory.setLanguage(language);
    SerialPort::portOpened = false;
    SerialPort::scopeRunning = false;
    SerialPort::reconnecting = false;
    kt500sim::DriveOptions options;
    options.linkPath = linkFolder->filePath(QStringLiteral("kt500"));
    drive = std::make_unique<kt500sim::SimulatedDrive>(options);
    QString error;
    if (!drive->start(&error))
        qFatal("%s", qPrintable(error));
    addSerialPort({drive->portName(), QStringLiteral("Brennic test drive"), QStringLiteral("Brennic")});
    application = std::make_unique<Application>(startApplication());
}

Workplace::~Workplace()
{
    removeSerialPort(drive->portName());
    application.reset();
    drive.reset();
    delete linkFolder;
}

MainWindow *Workplace::window() const
{
    return application->window.get();
}

QAction *Workplace::action(const char *name) const
{
    return window()->findChild<QAction *>(QLatin1String(name));
}

void Workplace::connectTo(const QString &speed)
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        auto *const dialog = qobject_cast<CommunicationSetting *>(widget);
        if (!dialog || !dialog->isVisible())
            continue;
        dialog->findChild<QComboBox *>(QStringLiteral("baudCombox"))->setCurrentText(speed);
        QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("okButton")), Qt::LeftButton);
    }
}

bool Workplace::isShownOnline() const
{
    return action("actiononOff")->toolTip() == QStringLiteral("在线");
}

void Workplace::clickAction(const QWidget *window, const char *name)
{
    auto *const action = window->findChild<QAction *>(QLatin1String(name));
    auto *const bar = window->findChild<QToolBar *>();
    QTest::mouseClick(bar->widgetForAction(action), Qt::LeftButton);
}

ParameterEditor *Workplace::openEditor() const
{
    clickAction(window(), "actionParameter_Editor");
    auto *const editor = window()->findChild<ParameterEditor *>();
    if (!editor)
        return nullptr;
    const auto *const list = editor->findChild<QListWidget *>();
    return QTest::qWaitFor([list] { return list->currentRow() == 1; }) ? editor : nullptr;
}

ParameterEditor *Workplace::openConnectedEditor(const QString &speed)
{
    connectTo(speed);
    return QTest::qWaitFor([this] { return isShownOnline(); }) ? openEditor() : nullptr;
}

ParameterTable *Workplace::page(const ParameterEditor *editor, int index)
{
    return qobject_cast<ParameterTable *>(editor->findChild<QStackedWidget *>()->widget(index));
}

int Workplace::rowOf(const ParameterTable *page, const QString &code)
{
    for (int row = 0; row < page->rowCount(); ++row) {
        if (page->code(row) == code)
            return row;
    }
    return -1;
}

QString Workplace::value(const ParameterEditor *editor, int index, const QString &code)
{
    const ParameterTable *const table = page(editor, index);
    return table->text(rowOf(table, code), ParameterTable::ValueColumn);
}

QColor Workplace::colour(const ParameterEditor *editor, int index, const QString &code)
{
    const ParameterTable *const table = page(editor, index);
    return table->item(rowOf(table, code), ParameterTable::ValueColumn)->foreground().color();
}

void Workplace::setValue(const ParameterEditor *editor, int index, const QString &code, const QString &text)
{
    const ParameterTable *const table = page(editor, index);
    table->item(rowOf(table, code), ParameterTable::ValueColumn)->setText(text);
}

QPoint Workplace::showValue(const ParameterEditor *editor, int index, const QString &code)
{
    editor->findChild<QListWidget *>()->setCurrentRow(index + 1);
    ParameterTable *const table = page(editor, index);
    const QTableWidgetItem *const cell = table->item(rowOf(table, code), ParameterTable::ValueColumn);
    table->scrollToItem(cell);
    return table->visualItemRect(cell).center();
}

ParameterSettingHelper *Workplace::openHelper(const ParameterEditor *editor, int index, const QString &code)
{
    const QPoint place = showValue(editor, index, code);
    ParameterTable *const table = page(editor, index);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
    const QList<ParameterSettingHelper *> helpers = table->findChildren<ParameterSettingHelper *>();
    for (ParameterSettingHelper *helper : helpers) {
        if (helper->isVisible())
            return helper;
    }
    return nullptr;
}

QProgressDialog *Workplace::progress(const ParameterEditor *editor)
{
    return editor->findChild<QProgressDialog *>();
}

void Workplace::keepOnly(const ParameterEditor *editor, const QStringList &codes)
{
    for (int index = 0; index < editor->findChild<QStackedWidget *>()->count(); ++index) {
        ParameterTable *const table = page(editor, index);
        for (int row = table->rowCount() - 1; row >= 0; --row) {
            if (!codes.contains(table->code(row)))
                table->removeRow(row);
        }
    }
}
