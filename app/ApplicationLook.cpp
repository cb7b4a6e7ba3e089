// SPDX-License-Identifier: Apache-2.0
#include "app/ApplicationLook.h"

#include "app/ControlStyle.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLabel>

namespace {

const QColor ink(0x13, 0x13, 0x13);
const QColor faintInk(0x5B, 0x5F, 0x66);
const QColor accent(0x67, 0x5B, 0x93);
constexpr int textHeight = 13; // pixels

/// What a style sheet makes of the font's name without quotes: Qt takes "Text" for one of its own words.
QString unquotedFontName()
{
    QLabel label;
    label.setStyleSheet(QStringLiteral("font-family: SF Pro Text;"));
    label.ensurePolished();
    return label.font().family();
}

/// The forms ask for the font by the name that few systems know it under.
void useSystemFontAsSubstitute()
{
    const QFont system = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    for (const QString &name : {QStringLiteral("SF Pro Text"), unquotedFontName()})
        QFont::insertSubstitutions(
            name, {QStringLiteral(".AppleSystemUIFont"), QStringLiteral("Inter"), system.family()});
}

QFont applicationFont()
{
    QFont font(QStringLiteral("SF Pro Text"));
    font.setPixelSize(textHeight);
    return font;
}

void setDisabledColors(QPalette &palette)
{
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x8A, 0x8D, 0x94));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xB9, 0xB3, 0xCC));
}

} // namespace

QPalette applicationPalette()
{
    QPalette palette(QColor(0xF5, 0xF4, 0xF8), Qt::white);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, ink);
    palette.setColor(QPalette::PlaceholderText, faintInk);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xF7, 0xF8, 0xFA));
    palette.setColor(QPalette::ToolTipBase, Qt::white);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6B, 0x4F, 0xBB));
    palette.setColor(QPalette::LinkVisited, accent);
    setDisabledColors(palette);
    return palette;
}

QIcon applicationIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256, 512, 1024})
        icon.addFile(QStringLiteral(":/icons/app-icon-%1.png").arg(size));
    return icon;
}

void useApplicationLook()
{
    useSystemFontAsSubstitute();
    QApplication::setStyle(makeControlStyle());
    QApplication::setPalette(applicationPalette());
    QApplication::setFont(applicationFont());
    QApplication::setWindowIcon(applicationIcon());
    // What a window manager shows for windows without a title.
    QApplication::setApplicationDisplayName(QStringLiteral("Pelix Customization Tool"));
}
