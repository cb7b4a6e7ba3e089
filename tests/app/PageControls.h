// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

class DlgCustomizationTool_v2;

/// The controls of all pages, as a user sets them.
namespace PageControls {

/// One control and the value that a user gives it.
struct Entry
{
    const char *control;
    QString value;
};

/// Every control of a product's pages with each of its values, and of the long lists some rows.
QList<Entry> entriesOf(bool editor);

/// False when there is no such control or it does not take the value.
bool give(const DlgCustomizationTool_v2 &window, const Entry &entry);

} // namespace PageControls
