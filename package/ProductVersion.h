// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The product version that the text of a postinstall script names: what follows "bigversion=", otherwise
/// a shortened form of what follows "newVersion="; empty when it has neither. Neither counts at the very
/// start of the text. A version that no document can hold (see isXmlText) is none; `unusable` (may be null)
/// tells whether there is such a one.
QString productVersion(const QString &postinstall, bool *unusable = nullptr);
