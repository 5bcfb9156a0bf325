// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/communicationsetting.h"

#include "link/portlist.h"
#include "link/serialport.h"
#include "link/silentgap.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QStyleOptionComboBox>
#include <QStylePainter>
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

// Shows a text that is too long by its two ends: the system name of a port stands last, and two adapters of
// one make differ in nothing else.
class EndsComboBox : public QComboBox
{
protected:
    void paintEvent(QPaintEvent *) override
    {
        QStylePainter painter(this);
        QStyleOptionComboBox option;
        initStyleOption(&option);
        painter.drawComplexControl(QStyle::CC_ComboBox, option);
        const int width =
            style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this).width();
        option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideMiddle, width - 2);
        painter.drawControl(QStyle::CE_ComboBoxLabel, option);
    }

    void showPopup() override
    {
        // The list is as wide as its entries, if the screen is.
        const QScreen *const shownOn = screen();
        const int widest = shownOn ? shownOn->availableGeometry().width() : width();
        const int margins = view()->width() - view()->viewport()->width() +
                            2 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin) +
                            style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        view()->setMinimumWidth(qMin(widest, view()->sizeHintForColumn(0) + margins));
        QComboBox::showPopup();
    }
};

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
    portCombox = new EndsComboBox;
    portCombox->setObjectName(QStringLiteral("portCombox"));
    baudCombox = new QComboBox;
    baudCombox->setObjectName(QStringLiteral("baudCombox"));
    baudCombox->addItems({QStringLiteral("115200(485)"), QStringLiteral("57600(485)"),
                          QStringLiteral("38400(485)"), QStringLiteral("19200(485)"),
                          QStringLiteral("9600(485)"), QStringLiteral("USB")});

    auto *detectButton = new QPushButton(tr("Start Auto Detect"));
    detectButton->setObjectName(QStringLiteral("detectButton"));
    auto *group = new QGroupBox(tr("Auto Detect"));
    auto *groupLayout = new QGridLayout(group);
    groupLayout->addWidget(new QLabel(tr("Port :")), 0, 0);
    groupLayout->addWidget(portCombox, 0, 1);
    groupLayout->addWidget(new QLabel(tr("BaudRate :")), 1, 0);
    groupLayout->addWidget(baudCombox, 1, 1);
    groupLayout->addWidget(detectButton, 2, 0, 1, 2);
    groupLayout->setColumnStretch(1, 1);

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

    connect(portCombox, &QComboBox::currentTextChanged, portCombox, &QWidget::setToolTip);
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
    for (int i = 0; i < entries.size(); ++i)
        portCombox->setItemData(i, entries.at(i), Qt::ToolTipRole);
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
