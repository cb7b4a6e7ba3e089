// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"

#include <QLatin1String>

#include <array>
#include <variant>

/// One setting of the record: its member name and where it lies. The list of them is what comparing,
/// showing and testing records walk over, so that no setting can be forgotten in one of these places.
struct RecordField
{
    using Member = std::variant<bool EditorXmlData::*, int EditorXmlData::*, QString EditorXmlData::*,
                                QDomElement EditorXmlData::*>;

    QLatin1String name;
    Member member;
};

/// All settings in the order in which the record declares them; the profile's identity is not one.
const std::array<RecordField, 18> &recordFields();

/// Whether both records hold the same value in a field; ribbon elements are compared by content.
bool sameValue(const RecordField &field, const EditorXmlData &first, const EditorXmlData &second);

/// An element as XML text with sorted attributes and without indentation, or a null string for a null element.
QString elementText(const QDomElement &element);
