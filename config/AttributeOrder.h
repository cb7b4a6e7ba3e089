// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The markup that QDom wrote, with the attributes of each element in the order of their names. QDom writes
/// them in an order that differs from run to run. Everything else stays as it is.
QString withSortedAttributes(const QString &markup);
