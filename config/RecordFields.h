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

/// Equal names, attributes, child elements and texts, but for white space around these. Comments and the like
/// do not count. Two null elements are the same.
bool sameElement(const QDomElement &first, const QDomElement &second);

/// The name of the first setting, or of the first member of the identity that is written, whose text no
/// document or profile can hold (see isXmlText); empty when all can be written.
QString unwritableSetting(const EditorXmlData &data);

/// An element as XML text with sorted attributes and without indentation, or a null string for a null
/// element.
QString elementText(const QDomElement &element);
