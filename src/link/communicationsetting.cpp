// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/communicationsetting.h"

#include "link/portlist.h"
#include "link/serialport.h"
#include "link/silentgap.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>

namespace {

const char *const makerWord = "Brennic";

QHBoxLayout *labelledRow(const QString &label, QWidget *field)
{
    auto *row = new QHBoxLayout;
    row->addWidget(new QLabel(label));
    row->addWidget(field, 1);
    return row;
}

} // namespace

CommunicationSetting::CommunicationSetting(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Brennic_Soft Setting"));
    setMinimumSize(300, 300);
    setWindowFlags(windowFlags() & ~(Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    buildLayout();
    buildModeFrame();
    detecDeviceSlt();
}

CommunicationSetting::~CommunicationSetting()
{
    delete modeFrame;
}

void CommunicationSetting::buildLayout()
{
    deviceCombox = new QComboBox;
    deviceCombox->setObjectName(QStringLiteral("deviceCombox"));
    deviceCombox->addItem(QStringLiteral("KT500"));
    portCombox = new QComboBox;
    portCombox->setObjectName(QStringLiteral("portCombox"));
    baudCombox = new QComboBox;
    baudCombox->setObjectName(QStringLiteral("baudCombox"));
    baudCombox->addItems({QStringLiteral("115200(485)"), QStringLiteral("57600(485)"),
                          QStringLiteral("38400(485)"), QStringLiteral("19200(485)"),
                          QStringLiteral("9600(485)"), QStringLiteral("USB")});

    auto *detectButton = new QPushButton(tr("Start Auto Detect"));
    detectButton->setObjectName(QStringLiteral("detectButton"));
    auto *group = new QGroupBox(tr("Auto Detect"));
    auto *groupLayout = new QVBoxLayout(group);
    groupLayout->addLayout(labelledRow(tr("Port :"), portCombox));
    groupLayout->addLayout(labelledRow(tr("BaudRate :"), baudCombox));
    groupLayout->addWidget(detectButton);

    auto *cancelButton = new QPushButton(tr("Cancel"));
    cancelButton->setObjectName(QStringLiteral("cancelButton"));
    auto *okButton = new QPushButton(tr("Ok"));
    okButton->setObjectName(QStringLiteral("okButton"));
    okButton->setDefault(true);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cancelButton);
    buttons->addWidget(okButton);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(labelledRow(tr("Select Device :"), deviceCombox));
    layout->addWidget(group);
    layout->addLayout(buttons);

    connect(detectButton, &QPushButton::clicked, this, &CommunicationSetting::detecDeviceSlt);
    connect(okButton, &QPushButton::clicked, this, &CommunicationSetting::getPortSlt);
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::close);
}

void CommunicationSetting::buildModeFrame()
{
    modeFrame = new QFrame;
    onLineButton = new QRadioButton(tr("On-Line"), modeFrame);
    offLineButton = new QRadioButton(tr("Off-line"), modeFrame);
    offLineButton->setChecked(true);
    connect(onLineButton, &QRadioButton::toggled, this, &CommunicationSetting::OnLineBtnToggled);
    connect(offLineButton, &QRadioButton::toggled, this, &CommunicationSetting::OffLineBtnToggled);
}

void CommunicationSetting::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (const QScreen *const shownOn = screen())
        move(shownOn->geometry().center() - rect().center());
    setFixedSize(size());
}

void CommunicationSetting::OnLineBtnToggled(bool toggled)
{
    if (!toggled)
        return;
    const QList<SerialPortEntry> ports = serialPorts();
    for (const SerialPortEntry &port : ports)
        portCombox->addItem(port.name + port.description);
}

void CommunicationSetting::OffLineBtnToggled(bool toggled)
{
    if (toggled)
        portCombox->clear();
}

void CommunicationSetting::detecDeviceSlt()
{
    portCombox->clear();
    QStringList entries;
    const QList<SerialPortEntry> ports = serialPorts();
    for (const SerialPortEntry &port : ports) {
        const QString entry = port.description + QLatin1Char('(') + port.name + QLatin1Char(')');
        if (port.description.contains(QLatin1String(makerWord)))
            entries.prepend(entry);
        else
            entries.append(entry);
    }
    portCombox->addItems(entries);
}

void CommunicationSetting::getPortSlt()
{
    const QString port = portCombox->currentText();
    const QString baud = baudCombox->currentText();
    const int bracket = baud.indexOf(QLatin1Char('('));
    const qint32 speed = bracket < 0 ? usbBaudRate : baud.leftRef(bracket).toInt();
    if (port.isEmpty())
        return;
    SerialPort::reconnecting = false;
    emit setPortName(port, speed);
    close();
}
