// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"
#include "config/Product.h"

#include <QLatin1String>
#include <QString>

#include <optional>
#include <variant>
#include <vector>

/// A value of a profile as a setting takes it, whatever type it has there.
struct ProfileValue
{
    bool isThere = false; ///< false for none and for null
    int number = 0;       ///< Foundation's integer value of a text or a number; 0 for all else
    QString text;         ///< a text, or a number as text; null for all else
};

/// All that is known of one setting. Reading and writing documents and profiles, filling and collecting
/// controls, clearing, comparing and showing walk over the table of them, so that none can forget a setting.
/// A setting's default is the value in a record as constructed.
struct Setting
{
    using Record = EditorXmlData;
    using Member = std::variant<bool Record::*, int Record::*, QString Record::*, QDomElement Record::*>;

    /// The sections of a document, in its order; a profile has all but Installation.
    enum class Section { Preferences, Plugins, Installation, Ribbon, QuickAccessBar };

    /// What a new document gets before the record's values are filled in.
    enum class Written { EmptyThenFilled, ZeroThenFilled, AtOnce };

    struct Choice
    {
        QLatin1String value;   ///< as `pct` shows it
        QLatin1String word;    ///< as the window offers it, in English
        QLatin1String brief{}; ///< what may be said instead of a long word
    };

    /// What one text holds: itself, or several entries with a mark between them.
    enum class Entries { One, Plugins, Domains, FileTypes };

    /// Where documents and profiles have the setting: in an attribute of the item whose "Text" is the key.
    /// A section of the ribbon has no items but holds the setting's element.
    struct Place
    {
        Section section = Section::Preferences;
        int item = 0; ///< the item's place in its section
        QLatin1String key;
        QLatin1String attribute;
    };

    /// Null functions where documents do not have the setting.
    struct InDocument
    {
        Written written = Written::EmptyThenFilled;
        /// The attribute's text; nothing where that of a new document stays.
        std::optional<QString> (*text)(const Record &) = nullptr;
        /// Takes the text, which is empty when the attribute is absent.
        void (*read)(Record &, const QString &text) = nullptr;
    };

    /// Null functions where profiles do not have the setting.
    struct InProfile
    {
        std::variant<QString, int> (*value)(const Record &) = nullptr;
        void (*read)(Record &, const ProfileValue &) = nullptr;
    };

    template <typename Value> using Take = void (*)(Record &, const Value &);

    /// The control that shows the setting. Its value is whether it is checked, an index or a text.
    struct Control
    {
        QLatin1String name;      ///< object name; empty where a page shows the setting in its own way
        int turn = 0;            ///< when a save asks for it, from 1
        bool isOptional = false; ///< without the control the record keeps its value
        std::variant<bool, int, QString> (*shown)(const Record &) = nullptr;
        std::variant<Take<bool>, Take<int>, Take<QString>> collect;
    };

    QLatin1String name; ///< of the record's member; what `pct` calls the setting
    Member member;
    QLatin1String title;   ///< what people read at the control, in English
    QLatin1String meaning; ///< what the setting does, in a few words
    QLatin1String help;    ///< page of the guide, with an anchor where the page is about several settings
    std::vector<Choice> choices; ///< where only some values have a meaning; booleans have none
    Entries entries = Entries::One;
    bool isOnlyForEditor = false;
    bool isCollectedAnew = false; ///< a save starts from the default, see EditorXmlData::Clear
    Place place;
    InDocument document;
    InProfile profile;
    Control control;
    /// Brings the value into the form in which a window would have collected it; null where there is one
    /// form.
    void (*settle)(Record &, const Product &) = nullptr;
    /// Brings the members that say the same in another way into line, after this one alone was changed; null
    /// where no other does.
    void (*follow)(Record &) = nullptr;
};

/// All settings in the order in which the record declares them; the profile's identity is not one.
const std::vector<Setting> &settings();

/// The element of a setting of the ribbon.
QDomElement &elementOf(const Setting &setting, EditorXmlData &data);
const QDomElement &elementOf(const Setting &setting, const EditorXmlData &data);

/// Whether both records hold the same value; ribbon elements are compared by content.
bool sameValue(const Setting &setting, const EditorXmlData &first, const EditorXmlData &second);

/// Sets the default.
void reset(const Setting &setting, EditorXmlData &data);

/// Collects what a window without the control would: false, 0 or the empty text.
void collectNothing(const Setting &setting, EditorXmlData &data);

/// The name of the first setting, or of the first member of the identity that is written, whose text no
/// document or profile can hold (see isXmlText); empty when all can be written.
QString unwritableSetting(const EditorXmlData &data);
