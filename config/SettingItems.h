// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/Settings.h"

#include <QDomElement>
#include <QStringList>
#include <QVector>

// The table of settings as documents, profiles and the window walk over it.

/// The settings that one item of a document or profile holds.
struct SettingItem
{
    QLatin1String key;
    std::vector<const Setting *> settings; ///< one for each attribute
};

/// The items of a section, in their order.
const std::vector<SettingItem> &documentItems(Setting::Section section);
const std::vector<SettingItem> &profileItems(Setting::Section section);

/// The setting of a section that has only one.
const Setting &settingIn(Setting::Section section);

/// What documents and profiles call a section, all sections, and the elements that a section holds.
QLatin1String sectionName(Setting::Section section);
QStringList sectionNames();
QLatin1String elementName(Setting::Section section);

/// The sections of one document: for each the first element of its name, or a null one. Found in one walk.
class SectionElements
{
public:
    explicit SectionElements(const QDomElement &root);

    QDomElement &operator[](Setting::Section section);

private:
    QVector<QDomElement> m_elements; ///< in the order of the sections
};

/// The settings with a control of their own, in the order in which a save asks for them.
const std::vector<const Setting *> &settingsInTurns();
