// SPDX-License-Identifier: Apache-2.0
#include "app/ToolBarLook.h"

#include <QPainter>

namespace {

constexpr qreal disabledOpacity = 0.6;

QPixmap faint(const QPixmap &picture)
{
    QPixmap faint(picture.size());
    faint.setDevicePixelRatio(picture.devicePixelRatio());
    faint.fill(Qt::transparent);
    QPainter painter(&faint);
    painter.setOpacity(disabledOpacity);
    painter.drawPixmap(0, 0, picture);
    return faint;
}

/// The name of the same picture at twice its size.
QString sharper(const QString &image)
{
    return QString(image).insert(image.lastIndexOf(QLatin1Char('.')), QStringLiteral("@2x"));
}

} // namespace

QString ToolBarLook::toolTipText(const QString &title, const QString &text)
{
    return QStringLiteral("<html><body style=\"font-family:'SF Pro Text'; font-size:14px;\">"
                          "<p style=\"margin:0px; font-weight:700;\">%1</p>"
                          "<p style=\"margin:4px 0px 0px 0px;\">%2</p></body></html>")
        .arg(title.toHtmlEscaped(), text.toHtmlEscaped());
}

QString ToolBarLook::toolButtonSheet(const QString &image)
{
    return QStringLiteral("QToolButton { border: 2px solid transparent; border-radius: 6px;"
                          " padding: 6px; image: url(:/img/%1-normal.png); }"
                          "QToolButton:hover { image: url(:/img/%1-hover.png); }"
                          "QToolButton:pressed { background-color: #DCD3F5; }"
                          "QToolButton:focus { border-color: #6B4FBB; }"
                          "QToolButton:disabled { image: url(:/img/%1-disable.png); }"
                          "QToolButton::menu-indicator { image: none; }")
        .arg(image);
}

QString ToolBarLook::checkableToolButtonSheet(const QString &image)
{
    return toolButtonSheet(image) +
           QStringLiteral("QToolButton:checked { image: url(:/img/%1-checked.png); }").arg(image);
}

QString ToolBarLook::pageButtonSheet()
{
    return QStringLiteral("QToolButton { background-color: #3F3954; color: #FFFFFF; border: none;"
                          " border-left: 4px solid #3F3954; padding-left: 14px; padding-right: 14px;"
                          " font-family: \"SF Pro Text\"; font-size: 14px; text-align: left; }"
                          "QToolButton:hover { background-color: #524A6E; border-color: #524A6E; }"
                          "QToolButton:checked { background-color: #675B93; border-color: #C9B8FF; }"
                          "QToolButton:focus { border: 2px solid #FFFFFF; border-left-width: 4px; }"
                          "QToolButton:disabled { color: #B5AFC7; }");
}

QIcon ToolBarLook::pageButtonIcon(const QString &image)
{
    QIcon icon(image);
    for (const QString &file : {image, sharper(image)})
        icon.addPixmap(faint(QPixmap(file)), QIcon::Disabled);
    return icon;
}
