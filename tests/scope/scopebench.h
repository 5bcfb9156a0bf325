// SPDX-License-Identifier: GPL-3.0-or-later
// A scope window alone: the test plays the link. Records what the window sends and says, in order. Main
// thread; an object on the stack of a test function.
#pragma once

#include "scope/channelconfig.h"
#include "scope/channelpanels.h"
#include "scope/plotter.h"
#include "scope/scope.h"
#include "scope/scopesidepanel.h"
#include "scope/scopetoolbar.h"

#include "link/serialport.h"
#include "support/wire.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>
#include <QTest>

class ScopeBench
{
public:
    // The port is open, as far as windows are told.
    ScopeBench()
    {
        SerialPort::portOpened = true;
        SerialPort::reconnecting = false;
        QObject::connect(scope, &Scope::writeToSerialPort, &context,
                         [this](const QByteArray &frame, const QString &name) {
                             log.append("frame " + QString::fromLatin1(frame.toHex()));
                             windowNames.append(name);
                         });
        QObject::connect(scope, &Scope::scopeRuning, &context,
                         [this](bool isRuning) { log.append(isRuning ? "running" : "ended"); });
        QObject::connect(scope, &Scope::sendScopeIsStopSignal, &context,
                         [this](bool isStop) { log.append(isStop ? "stopped" : "live"); });
        QObject::connect(scope, &Scope::sendPlotterDataSignal, &context,
                         [this](const QVector<double> &data1, const QVector<double> &data2,
                                const QVector<double> &data3, const QVector<double> &data4) {
                             batches.append(ScopeSamples{{data1, data2, data3, data4}});
                         });
        QObject::connect(&link, &SerialPort::stopscope, scope, &Scope::runActSlot);
        tools = scope->findChild<ScopeToolBar *>();
        panel = scope->findChild<ScopeSidePanel *>();
        panels = scope->findChild<ChannelPanels *>();
        plot = scope->findChild<Plotter *>();
    }
    ~ScopeBench()
    {
        delete scope;
        SerialPort::portOpened = false;
        SerialPort::reconnecting = false;
    }
    Q_DISABLE_COPY_MOVE(ScopeBench)

    QAction *tool(ScopeToolBar::Tool tool) const { return tools->action(tool); }
    void run() const { tool(ScopeToolBar::Run)->trigger(); }
    QString runText() const { return tool(ScopeToolBar::Run)->text(); }
    ChannelConfig *channel(int number) const { return panels->channel(number - 1); } // 1 to 4
    QString data(int number) const { return channel(number)->dataEdit->text(); }
    QString type(int number) const { return channel(number)->typeEdit->text(); }
    bool isOn(int number) const { return channel(number)->checkBox->isChecked(); }
    void click(int number) const { channel(number)->checkBox->click(); }
    void setItem(int number, int row) const { channel(number)->comboBox->setCurrentIndex(row); }
    void take(const char *chunk) const { scope->handleParameterScope(wire::bytes(chunk)); }
    void close() const { scope->close(); }
    // The channels that are on, and those whose panels are open: "1-3-" and the like.
    QString onText() const
    {
        return channelText([this](int n) { return isOn(n); });
    }
    QString openText() const
    {
        return channelText([this](int n) { return channel(n)->isEnabled(); });
    }
    template <typename Condition>
    static QString channelText(Condition condition)
    {
        QString text;
        for (int number = 1; number <= 4; ++number)
            text += condition(number) ? QString::number(number) : QStringLiteral("-");
        return text;
    }

    QStringList log;
    QStringList windowNames; // of the frames
    QList<ScopeSamples> batches;
    QPointer<Scope> scope = new Scope;
    SerialPort link; // never started
    ScopeToolBar *tools = nullptr;
    ScopeSidePanel *panel = nullptr;
    ChannelPanels *panels = nullptr;
    Plotter *plot = nullptr;

private:
    QObject context;
};

// What the window is to send, by name.
namespace scopelog {

const QString stopFrame = QStringLiteral("frame 01140000000000000000dec2");
const QString withdrawal = QStringLiteral("frame ");
inline QString request(const char *hex)
{
    return "frame " + QString::fromLatin1(wire::frame(hex).toHex());
}

} // namespace scopelog
