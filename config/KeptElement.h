// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDomElement>
#include <QString>

// The elements that a record keeps.

/// A deep copy of an element that can be kept in a record. An element does not keep its document alive, and
/// Qt reads freed memory when an element outlives it; the copy's document lives as long as the process.
/// Null for a null element. Any thread.
QDomElement keptElement(const QDomElement &element);

/// Equal names, attributes, child elements and texts, but for white space around these. Comments and the like
/// do not count. Two null elements are the same.
bool sameElement(const QDomElement &first, const QDomElement &second);

/// Whether all its attributes and texts can be read again when they are written (see isXmlText).
bool isXmlElement(const QDomElement &element);

/// An element as XML text with sorted attributes and without indentation, or a null string for a null
/// element.
QString elementText(const QDomElement &element);
