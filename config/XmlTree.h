// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/XmlStream.h"

#include <QByteArray>
#include <QDomDocument>
#include <QHash>
#include <QStringList>
#include <QVector>

/// Where the elements of a tree stood in its text.
class XmlPlaces
{
public:
    void add(const QDomElement &element, const TextPlace &place);
    /// No place for an element that is not of the tree.
    TextPlace of(const QDomElement &element) const;

private:
    QHash<const void *, TextPlace> m_places;
};

/// XML as a tree.
namespace XmlTree {

/// Builds the tree in one pass, under XmlStream's limits or narrower ones. Names keep their prefix; the
/// declaration is a processing instruction; text that is nothing but white space is left out. A problem
/// says what is wrong, with line and column. Any thread.
Result<QDomDocument> read(const QByteArray &xml, const XmlStream::Limits &limits = {});

/// The same, and remembers the places of all elements.
Result<QDomDocument> read(const QByteArray &xml, XmlPlaces &places, const XmlStream::Limits &limits = {});

/// For each name the first element that has it below `root`, in the order of the document, or a null one; in
/// one walk over the tree.
QVector<QDomElement> firstNamed(const QDomElement &root, const QStringList &tagNames);

} // namespace XmlTree
