// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/lightpalette.h"

#include <QApplication>
#include <QToolTip>

namespace {

struct RoleColour
{
    QPalette::ColorRole role;
    QRgb colour;
};

constexpr RoleColour colours[] = {
    {QPalette::Window, 0xffefefef},      {QPalette::WindowText, 0xff000000},
    {QPalette::Base, 0xffffffff},        {QPalette::AlternateBase, 0xfff7f7f7},
    {QPalette::Text, 0xff000000},        {QPalette::PlaceholderText, 0xff808080},
    {QPalette::Button, 0xffefefef},      {QPalette::ButtonText, 0xff000000},
    {QPalette::BrightText, 0xffffffff},  {QPalette::Light, 0xffffffff},
    {QPalette::Midlight, 0xffcacaca},    {QPalette::Mid, 0xffb8b8b8},
    {QPalette::Dark, 0xff9f9f9f},        {QPalette::Shadow, 0xff767676},
    {QPalette::Highlight, 0xff308cc6},   {QPalette::HighlightedText, 0xffffffff},
    {QPalette::Link, 0xff0000ff},        {QPalette::LinkVisited, 0xffff00ff},
    {QPalette::ToolTipBase, 0xffffffdc}, {QPalette::ToolTipText, 0xff000000},
};

constexpr RoleColour disabledColours[] = {
    {QPalette::WindowText, 0xffbebebe}, {QPalette::Text, 0xffbebebe},
    {QPalette::ButtonText, 0xffbebebe}, {QPalette::PlaceholderText, 0xffbebebe},
    {QPalette::Base, 0xffefefef},       {QPalette::Highlight, 0xff919191},
    {QPalette::Dark, 0xffbebebe},       {QPalette::Shadow, 0xffb1b1b1},
};

} // namespace

QPalette lightPalette()
{
    QPalette palette;
    for (const RoleColour &entry : colours)
        palette.setColor(QPalette::All, entry.role, QColor(entry.colour));
    for (const RoleColour &entry : disabledColours)
        palette.setColor(QPalette::Disabled, entry.role, QColor(entry.colour));
    return palette;
}

void useLightPalette()
{
    QApplication::setPalette(lightPalette());
    QToolTip::setPalette(lightPalette());
}
