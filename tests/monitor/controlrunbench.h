// SPDX-License-Identifier: GPL-3.0-or-later
// The panel of the control method, and all that it says. Main thread; an object on the stack of a test
// function.
#pragma once

#include "monitor/control_run.h"
#include "support/testdirectory.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

inline QByteArray pictureOf(const QIcon &icon)
{
    const QImage image = icon.pixmap(40, 40).toImage();
    return QByteArray(reinterpret_cast<const char *>(image.constBits()), int(image.sizeInBytes()));
}

// The panel, and all that it says, in order.
class ControlRunBench
{
public:
    ControlRunBench()
    {
        QObject::connect(&panel, &Control_Run::methodComboBoxchangedSignal,
                         [this](int index) { said << QStringLiteral("method %1").arg(index); });
        QObject::connect(&panel, &Control_Run::Pn300ComboBoxChangedSignal,
                         [this](int value) { said << QStringLiteral("Pn300 %1").arg(value); });
        QObject::connect(&panel, &Control_Run::LineEditChangedSignal, [this](int index, int value) {
            said << QStringLiteral("edit %1 %2").arg(index).arg(value);
        });
        QObject::connect(&panel, &Control_Run::otherComboBoxChangedSignal, [this](int index, int value) {
            said << QStringLiteral("combo %1 %2").arg(index).arg(value);
        });
        QObject::connect(&panel, &Control_Run::BtnEnableSignal, [this](int index, bool status) {
            said << QStringLiteral("enable %1 %2").arg(index).arg(int(status));
        });
        QObject::connect(&panel, &Control_Run::readBtnclickedSignal, [this] { said << "read"; });
    }

    QComboBox *combo(const char *name) const { return panel.findChild<QComboBox *>(QLatin1String(name)); }
    QLineEdit *edit(int index) const
    {
        return panel.findChild<QLineEdit *>(QStringLiteral("lineEdit%1").arg(index));
    }
    QPushButton *button(const char *name) const
    {
        return panel.findChild<QPushButton *>(QLatin1String(name));
    }
    QTabWidget *tabs() const { return panel.findChild<QTabWidget *>(); }
    // The picture of the enable button; whether it is pressed in must say the same.
    bool isOn() const
    {
        const QPushButton *const enable = button("enableButton");
        const bool isStop = pictureOf(enable->icon()) == pictureOf(QIcon(":/pic/pic/stop.png"));
        if (!isStop && pictureOf(enable->icon()) != pictureOf(QIcon(":/pic/pic/start.png")))
            qWarning("neither picture");
        if (isStop != enable->isChecked())
            qWarning("picture and state differ");
        return isStop;
    }
    // Types into a field and ends the editing.
    void type(int index, const QString &text) const
    {
        edit(index)->selectAll();
        if (text.isEmpty())
            QTest::keyClick(edit(index), Qt::Key_Delete);
        else
            QTest::keyClicks(edit(index), text);
        QTest::keyClick(edit(index), Qt::Key_Return);
    }
    QStringList positions() const
    {
        QStringList list;
        for (const char *name :
             {"positionSourceComboBox", "pulseShapeComboBox", "pulseTerminalComboBox", "pulseWidthComboBox"})
            list << combo(name)->currentText();
        return list;
    }
    QStringList edits(const QList<int> &indices) const
    {
        QStringList list;
        for (const int index : indices)
            list << edit(index)->text();
        return list;
    }

    TestDirectory directory;
    Control_Run panel;
    QStringList said;
};
