// SPDX-License-Identifier: GPL-3.0-or-later
// The panel of sources, functions and forced levels, and all that it says, in order. Main thread; an object
// on the stack of a test function.
#pragma once

#include "monitor/io_control.h"
#include "support/testdirectory.h"
#include "support/wire.h"

#include <QComboBox>
#include <QMap>
#include <QPushButton>

// Registers of the first function of each half.
constexpr int diFunctions = 0x20D3;
constexpr int doFunctions = 0x20E7;

inline QByteArray pictureOf(const QIcon &icon)
{
    const QImage image = icon.pixmap(24, 22).toImage();
    return QByteArray(reinterpret_cast<const char *>(image.constBits()), int(image.sizeInBytes()));
}

class IoControlBench
{
public:
    explicit IoControlBench(const char *language = "en_US")
    {
        directory.setLanguage(QString::fromLatin1(language));
        panel = new io_control;
        log("DIsource", &io_control::DIsourceChangedSignal);
        log("DOsource", &io_control::DOsourceChangedSignal);
        log("DIlevel", &io_control::DIBtnclickedSignal);
        log("DOlevel", &io_control::DOBtnclickedSignal);
        log("enable row", &io_control::DIEnableNumSignal);
        QObject::connect(panel, &io_control::DIEnableSignal, panel, [this](bool status) {
            said << (status ? QStringLiteral("enable on") : QStringLiteral("enable off"));
        });
        QObject::connect(panel, &io_control::DIfunctionChangedSignal, panel, [this](int num, int index) {
            said << QStringLiteral("DIfunction %1 %2").arg(num).arg(index);
        });
        QObject::connect(panel, &io_control::DOfunctionChangedSignal, panel, [this](int num, int index) {
            said << QStringLiteral("DOfunction %1 %2").arg(num).arg(index);
        });
    }
    ~IoControlBench() { delete panel; }
    Q_DISABLE_COPY_MOVE(IoControlBench)

    QComboBox *source(const QString &half) const
    {
        return panel->findChild<QComboBox *>(half + QLatin1String("SourceComboBox"));
    }
    // Rows count from 1, as their labels do.
    QComboBox *function(const QString &half, int row) const
    {
        return panel->findChild<QComboBox *>(half + QLatin1String("FunctionComboBox") + QString::number(row));
    }
    QPushButton *button(const QString &half, int row) const
    {
        return panel->findChild<QPushButton *>(half + QLatin1String("LevelButton") + QString::number(row));
    }
    bool isHigh(const QString &half, int row) const
    {
        const QPushButton *const level = button(half, row);
        const QIcon on(QStringLiteral(":/pic/pic/on.png"));
        const QIcon off(QStringLiteral(":/pic/pic/off.png"));
        const bool isOn = pictureOf(level->icon()) == pictureOf(on);
        if (!isOn && pictureOf(level->icon()) != pictureOf(off))
            qWarning("neither picture");
        if (isOn != level->isChecked())
            qWarning("picture and state differ");
        return isOn;
    }
    void poll(int address, const char *data) const
    {
        panel->handleio_DIDOFuncSlot(wire::bytes(data), address);
    }
    // All sixteen inputs, without function but for these rows.
    void pollInputs(const QMap<int, const char *> &rows) const
    {
        for (int row = 0; row < 16; ++row)
            poll(diFunctions + row, rows.value(row, "0000"));
    }

    TestDirectory directory;
    io_control *panel = nullptr;
    QStringList said;

private:
    template <typename Signal>
    void log(const char *name, Signal signal)
    {
        QObject::connect(panel, signal, panel, [this, name](int value) {
            said << QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(value);
        });
    }
};
