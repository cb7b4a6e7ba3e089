// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDomElement>

/// A deep copy of an element that can be kept in a record. An element does not keep its document alive, and
/// Qt reads freed memory when an element outlives it; the copy's document lives as long as the process.
/// Null for a null element. Any thread.
QDomElement keptElement(const QDomElement &element);
