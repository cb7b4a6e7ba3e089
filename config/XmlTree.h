// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/XmlStream.h"

#include <QByteArray>
#include <QString>

class QDomDocument;

/// XML as a tree.
namespace XmlTree {

/// Builds the tree in one pass, under XmlStream's limits or narrower ones. Names keep their prefix; the
/// declaration is a processing instruction; text that is nothing but white space is left out. When it fails
/// the document stays as it was, and `error` (optional) says what is wrong, with line and column. Any thread.
bool read(const QByteArray &xml, QDomDocument &document, QString *error = nullptr,
          const XmlStream::Limits &limits = {});

} // namespace XmlTree
