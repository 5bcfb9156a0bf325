// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/workplace.h"

#include "link/communicationsetting.h"
#include "link/portlist.h"
#include "link/serialport.h"
#include "shell/mainwindow.h"
#include "shell/startup.h"
#include "support/toolclick.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

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

void Workplace::closeConnectionDialog()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        auto *const dialog = qobject_cast<CommunicationSetting *>(widget);
        if (dialog && dialog->isVisible())
            QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("cancelButton")),
                              Qt::LeftButton);
    }
}

bool Workplace::isShownOnline() const
{
    return action("actiononOff")->toolTip() == QStringLiteral("在线");
}

void Workplace::clickAction(const QWidget *window, const char *name)
{
    clickTool(window, name);
}
