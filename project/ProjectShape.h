// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/JsonReader.h"
#include "core/Result.h"

#include <QJsonObject>
#include <QLatin1String>
#include <QList>
#include <QString>
#include <QStringList>

/// What may stand in a project file, as one table: reading, messages and the JSON Schema go by it.
namespace ProjectShape {

struct Field
{
    enum class Kind {
        Text,
        Word,          ///< one of `words`
        Path,          ///< of a file below the project's folder
        Folder,        ///< of the outputs, below the project's folder; takes placeholders
        FileName,      ///< of an output; takes placeholders
        Secret,        ///< a text, or where it is to be had: "@env:NAME" or "@file:PATH"
        Names,         ///< a list of texts
        Values,        ///< settings by name, with values in words
        Object,        ///< with `fields`
        Objects,       ///< several of them, by a name of their own
        OptionalObject ///< an object, nothing for one without members, or false to leave out what is
                       ///< inherited
    };

    QLatin1String name;
    Kind kind;
    QString meaning;
    QStringList words{};
    QList<Field> fields{};
    bool isRequired = false;
};

/// The members of the outermost object.
const QList<Field> &fields();

/// The outputs that a variant can have, in the order in which they are made.
const QList<Field> &outputs();

/// That the value has this shape. The problem is about the place, see problemAt(), and says what is allowed.
Result<> check(const Json::Value &project);

/// The table as JSON Schema (draft 7).
QJsonObject jsonSchema();

} // namespace ProjectShape
