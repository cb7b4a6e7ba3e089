// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "profile/PropertyListSink.h"

#include <optional>

/// What stands in the elements of XML property lists, as Foundation understands it. Any thread.
namespace PropertyListScalars {

/// Decimal or hexadecimal, of at most 64 bits with or without a sign; white space may stand in front.
std::optional<PropertyList::Scalar> integer(const QString &text);

/// Decimal, "nan", or infinity in the usual spellings.
std::optional<PropertyList::Scalar> real(const QString &text);

/// YYYY-MM-DDThh:mm:ssZ. A day that no calendar has is a date, too.
std::optional<PropertyList::Scalar> date(const QString &text);

/// Base64; what is none of its characters is passed over.
PropertyList::Scalar data(const QString &text);

} // namespace PropertyListScalars
