// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/plotdialogs.h"

#include "settings/settingskeys.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPixmap>
#include <QPointer>
#include <QSettings>
#include <QWidget>

namespace {

// Without a parent: the plot may go while the box stands.
void inform(const QString &title, const QString &text)
{
    QMessageBox box(QMessageBox::Information, title, text, QMessageBox::Ok);
    box.exec();
}

void showZoomHints(const ViewSwitches &switches, const QString &noAxis, const QString &noChannel)
{
    const bool hasAxis = switches.zoomTimeAxis || switches.zoomValueAxis;
    const bool hasChannel = switches.zoomChannel.contains(true);
    const QString title = QStringLiteral("提示");
    if (!hasAxis)
        inform(title, noAxis);
    if (!hasChannel)
        inform(title, noChannel);
}

} // namespace

void showZoomInHints(const ViewSwitches &switches)
{
    showZoomHints(switches, QStringLiteral("请选择放大轴线"), QStringLiteral("请选择放大通道"));
}

void showZoomOutHints(const ViewSwitches &switches)
{
    showZoomHints(switches, QStringLiteral("请选择缩小轴线"), QStringLiteral("请选择缩小通道"));
}

void saveWidgetImage(QWidget *widget)
{
    const QString key = QStringLiteral("%1/%2").arg(settingskey::savePath, settingskey::savePixmapPath);
    const QString before = QSettings(settingsFile, QSettings::IniFormat).value(key).toString();
    const QPointer<QWidget> saved(widget);
    const QString name = QFileDialog::getSaveFileName(
        widget, QCoreApplication::translate("Plotter", "SaveWaveImage"), before + QStringLiteral("/plotter"),
        QStringLiteral("PNG(*.png);; JPG(*.jpg);; GIF(*.gif);;BMP(*,bmp);; SVG(*.svg);; PDF(*.pdf)"));
    if (!saved || name.isEmpty())
        return;
    // Deliberate: that a format can't be written is not told.
    widget->grab().save(name);
    QSettings(settingsFile, QSettings::IniFormat)
        .setValue(key, name.left(name.lastIndexOf(QLatin1Char('/'))));
    inform(QCoreApplication::translate("Plotter", "Save  Wave Image"),
           QCoreApplication::translate("Plotter", "Succeed Save Wave Image "));
}
