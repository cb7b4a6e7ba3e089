// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"

#include <QStringList>

/// Records that tests of several programs start from.
namespace RecordSamples {

/// An element parsed from XML text, fit to be kept in a record.
QDomElement element(const QByteArray &xml);

/// A record in which every setting differs from its default.
EditorXmlData everythingChanged();

} // namespace RecordSamples
