// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"

#include <QLatin1String>
#include <QString>

#include <array>
#include <optional>

/// One attribute of one preference item in the configuration document: how it reads and how it is
/// written. Reader and writer walk over the same list.
///
/// Written form, root to leaf: PelixPDFEditor or PelixPDFReader / Profstore / Preferences / Preference,
/// the item's key being its attribute `Text`.
struct DocumentSetting
{
    QLatin1String key;
    QLatin1String attribute;

    using Write = std::optional<QString> (*)(const EditorXmlData &);

    /// The value that a new document gets; null where that is the empty text.
    Write builderValue;

    /// The value that filling puts in its place; null where the builder's value stays, and no result
    /// where it stays for this record.
    Write fillValue;

    /// Takes the attribute's text (empty when the attribute is absent) into the record.
    void (*read)(EditorXmlData &, const QString &text);
};

/// All preference attributes in document order; the attributes of one item stand together.
const std::array<DocumentSetting, 12> &documentSettings();
