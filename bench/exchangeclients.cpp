// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchangeclients.h"

#include "catalogue/parametercode.h"
#include "catalogueeditor.h"
#include "link/framecodec.h"
#include "link/serialport.h"
#include "link/silentgap.h"
#include "link/windownames.h"
#include "messageboxes.h"
#include "parameter/parametereditor.h"
#include "parameter/parameterframes.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QModbusRtuSerialMaster>
#include <QSerialPort>
#include <QTimer>

#include <modbus.h>

#include <cerrno>
#include <stdexcept>

namespace {

const QString parameter = QStringLiteral("Pn-002");
constexpr int station = 1;
constexpr int baudRate = 115200; // of no effect on a pseudo-terminal
constexpr int warmUp = 100;      // exchanges
constexpr int limit = 20000;     // ms

int registerNumber()
{
    return ramBase + registerOf(parameter);
}

// Counts exchanges, the first ones not, and says when the time is over.
class Meter
{
public:
    explicit Meter(int milliseconds)
        : nanoseconds(qint64(milliseconds) * 1000000)
    {
    }

    // True when this exchange was the last.
    bool count()
    {
        if (++done == 0)
            clock.start();
        return done > 0 && clock.nsecsElapsed() >= nanoseconds;
    }
    double rate() const { return done * 1e9 / double(clock.nsecsElapsed()); }

private:
    qint64 nanoseconds;
    int done = -warmUp;
    QElapsedTimer clock;
};

// Runs until the loop is told to quit; a line that has gone silent fails the benchmark.
void runLoop(QEventLoop &loop)
{
    QTimer::singleShot(limit, &loop, [&loop] { loop.exit(1); });
    if (loop.exec() != 0)
        throw std::runtime_error("the line has gone silent");
}

// A link that is up, with a receiver for every chunk as the product has one.
class OpenLink
{
public:
    explicit OpenLink(const QByteArray &path)
    {
        QObject::connect(&port, &SerialPort::servoONOFFLine, &port, [this](bool state) { online = state; });
        port.getPortName(QStringLiteral("Peer(%1)").arg(QString::fromLatin1(path)), usbBaudRate);
        waitUntil([this] { return online; }, "the link");
    }

    bool online = false;
    SerialPort port;
};

} // namespace

double libmodbusRate(const QByteArray &path, int milliseconds)
{
    modbus_t *const context = modbus_new_rtu(path.constData(), baudRate, 'N', 8, 1);
    if (!context || modbus_set_slave(context, station) != 0 || modbus_connect(context) != 0)
        throw std::runtime_error(modbus_strerror(errno));
    Meter meter(milliseconds);
    uint16_t value = 0;
    do {
        if (modbus_read_registers(context, registerNumber(), 1, &value) != 1)
            throw std::runtime_error(modbus_strerror(errno));
    } while (!meter.count());
    const double rate = meter.rate();
    modbus_close(context);
    modbus_free(context);
    return rate;
}

double serialBusRate(const QByteArray &path, int milliseconds)
{
    QModbusRtuSerialMaster master;
    master.setConnectionParameter(QModbusDevice::SerialPortNameParameter, QString::fromLatin1(path));
    master.setConnectionParameter(QModbusDevice::SerialBaudRateParameter, baudRate);
    master.setConnectionParameter(QModbusDevice::SerialParityParameter, QSerialPort::NoParity);
    if (!master.connectDevice())
        throw std::runtime_error(qPrintable(master.errorString()));
    const QModbusDataUnit unit(QModbusDataUnit::HoldingRegisters, registerNumber(), 1);
    Meter meter(milliseconds);
    QEventLoop loop;
    const std::function<void()> readNext = [&] {
        QModbusReply *const reply = master.sendReadRequest(unit, station);
        QObject::connect(reply, &QModbusReply::finished, &loop, [&, reply] {
            reply->deleteLater();
            if (reply->error() != QModbusDevice::NoError)
                loop.exit(1);
            else if (meter.count())
                loop.quit();
            else
                readNext();
        });
    };
    readNext();
    runLoop(loop);
    return meter.rate();
}

double linkRate(const QByteArray &path, int milliseconds)
{
    OpenLink link(path);
    const QByteArray request = parameterReadFrame(parameter, false);
    Meter meter(milliseconds);
    QEventLoop loop;
    QObject::connect(&link.port, &SerialPort::handleBaseParameter, &loop, [&] {
        if (meter.count())
            loop.quit();
        else
            link.port.writeSlot(request, editorLinkName);
    });
    link.port.writeSlot(request, editorLinkName);
    runLoop(loop);
    return meter.rate();
}

double editorRate(const QByteArray &path, int milliseconds)
{
    const auto editor = makeEditor();
    OpenLink link(path);
    QObject::connect(editor.get(), qOverload<QByteArray, QString>(&ParameterEditor::writeToSerialPort),
                     &link.port, &SerialPort::writeSlot);
    Meter meter(milliseconds);
    QEventLoop loop;
    QObject::connect(&link.port, &SerialPort::handleBaseParameter, &loop, [&](const QByteArray &reply) {
        editor->handleBaseParameter(reply);
        if (meter.count())
            loop.quit();
        else
            editor->readCurrentParameter({parameter});
    });
    editor->readCurrentParameter({parameter});
    runLoop(loop);
    return meter.rate();
}

double pageReadRate(const QByteArray &path)
{
    const auto editor = makeEditor();
    OpenLink link(path);
    QObject::connect(editor.get(), qOverload<QByteArray, QString>(&ParameterEditor::writeToSerialPort),
                     &link.port, &SerialPort::writeSlot);
    QObject::connect(&link.port, &SerialPort::handleBaseParameter, editor.get(),
                     &ParameterEditor::handleBaseParameter);
    QElapsedTimer clock;
    qint64 nanoseconds = 0;
    MessageBoxes boxes;
    boxes.shown = [&] { nanoseconds = clock.nsecsElapsed(); };
    clock.start();
    editor->readPageSlt();
    waitUntil([&nanoseconds] { return nanoseconds != 0; }, "the end of the page read", limit);
    return parameterCount(*editor) * 1e9 / double(nanoseconds);
}
