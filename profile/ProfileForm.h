// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

/// What a profile is beside its settings and its identity. As it stands it is what the window makes.
struct ProfileForm
{
    enum class Style {
        Payload,           ///< a payload of the product's own type
        ManagedPreferences ///< preferences of the product's domain, as a management forces them
    };
    /// For whom it is installed. Without a word each system decides.
    enum class Scope { Unsaid, System, User };

    /// The words for styles: "payload" and "mcx". A word that is none stands for the payload.
    static QStringList styleWords();
    static QString wordOf(Style style);
    static Style styleOf(const QString &word);

    /// The scope of a word, "system" or "user" in any case; another one says nothing.
    static Scope scopeOf(const QString &word);

    Style style = Style::Payload;
    Scope scope = Scope::Unsaid;
    QString displayName;  ///< empty for the usual one, as the next two
    QString organization; ///< who has made it
    QString description;
    bool isRemovalDisallowed = false;
    bool hasPayloadVersion = false; ///< in the payload, too; managed preferences have one in any case
    bool hasStableUuid = false;     ///< the payload's UUID follows from the profile's
};

/// A property list with the settings of a profile and nothing around them.
enum class SettingsForm {
    WholeList, ///< a file of its own, without what makes a payload of it
    BarePairs, ///< its keys and values only, with no dictionary around them
    Payload    ///< one dictionary with what makes a payload of it, in no list
};

/// The services that take one of these forms, in the order of the forms. A word that is none stands for the
/// first.
QStringList settingsFormWords();
QString wordOf(SettingsForm form);
SettingsForm settingsFormOf(const QString &word);
