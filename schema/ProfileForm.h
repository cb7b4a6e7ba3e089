// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/SettingText.h"

#include <vector>

// The settings as the forms of managements need them: what a profile holds, item by item.

struct FormField
{
    QString name; ///< of the key in the item
    const Setting *setting;
    /// As a profile has the values, with words for people; none where any text is taken.
    QList<SettingText::Choice> choices;
    bool isNumber = false; ///< and left out when it is not set; all others are texts that are always there
    QString standard;      ///< what a profile with default settings has
};

struct FormItem
{
    QString element; ///< the key of the item's dictionary: "Preference"
    QString key;     ///< what its "Text" says
    QString title;
    std::vector<FormField> fields;
};

/// The items of a section of the product's profiles, in their order. What the product lacks is there with the
/// one value that is written for it.
std::vector<FormItem> formItems(Setting::Section section, const Product &product);

/// What people should know about the values of a field, one sentence or more.
QString fieldDescription(const FormField &field, const Product &product);

/// An expression, for the whole text, of what a list may hold; empty for what is no list.
QString listPattern(const Setting &setting, const Product &product);

/// Yes and no for a boolean, the words of the window for all else.
QString wordFor(const Setting &setting, const SettingText::Choice &choice);
