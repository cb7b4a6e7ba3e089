// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include <QDomDocument>
#include <QString>

// Settings trees between the configuration document and a property list. The two directions are not
// symmetric: text comes back as an attribute named "text", and children with different tag names come back
// in the dictionary's order.

/// Attributes become strings, text the entry "text", children dictionaries under their tag name, or an array
/// of them where a tag name occurs more than once. Never nil; autoreleased.
NSMutableDictionary *QDomElementToNSDictionary(const QDomElement &element);

/// The way back: an element that can be kept in a record. nil gives an element with nothing in it.
QDomElement QDomElementFromNSDictionary(const QString &name, NSDictionary *dictionary);

/// The element for one entry. Strings become attributes; dictionaries and the items of arrays become
/// children. Other types, and keys that are no XML name, are skipped and logged. The document must outlive
/// the element.
QDomElement dictToQDomElement(QDomDocument &document, const QString &key, id value);
