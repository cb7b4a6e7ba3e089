// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// A row of a product's plug-in list.
struct _EditorXmlPuginData_
{
    QString name;        ///< what the plug-in is called in the list
    QString path;        ///< library file name inside the product; identifies the plug-in in settings
    QString description; ///< a sentence, may be empty
};

/// Sorts rows by name, case-sensitively.
inline bool EditorXmlCompareFunc(const _EditorXmlPuginData_ &first, const _EditorXmlPuginData_ &second)
{
    return first.name < second.name;
}
