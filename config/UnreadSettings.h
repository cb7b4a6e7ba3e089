// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDomElement>
#include <QStringList>
#include <QVector>

/// Something in a configuration document that nothing reads; only as long as the document lives.
struct UnreadSetting
{
    QString text;      ///< for people: `Preference "Startpage"`, `attribute "mode" of Preference "StartPage"`
    QString name;      ///< of the attribute, or the element's key, or its tag where it has none
    QStringList known; ///< what would be read at this place
    QDomElement element; ///< that is not read, or has the attribute
};

/// What a document holds beside the settings that ConfigDocument::apply reads, in the document's order. What
/// lies below an element that is not read, and inside the ribbon, is not told.
QVector<UnreadSetting> unreadSettings(const QDomDocument &document);
