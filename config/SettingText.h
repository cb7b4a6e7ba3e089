// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/Settings.h"
#include "core/Result.h"

#include <QList>
#include <QStringList>

/// Settings as people write them: by name, with values in words. What is written here can be taken back. Any
/// thread; the problems name no file.
namespace SettingText {

/// The setting of this name; otherwise the problem names the nearest one.
Result<const Setting *> named(const QString &name);

/// "boolean", "integer", "text", "list" or "element", which is XML.
QLatin1String typeName(const Setting &setting);

/// A value as documents have it and in a word, which is empty where there is none.
struct Choice
{
    QString value;
    QString word;
};

/// The values that the setting takes, or for a list the entries; none where anything of the type is taken.
QList<Choice> choicesOf(const Setting &setting, const Product &product);

/// The kinds of files that say settings in their own way.
enum class Form { Document, Profile };

/// The same where only some values are taken, with each value as a document or a profile has it. The setting
/// must be one that the form has.
QList<Choice> writtenChoicesOf(const Setting &setting, Form form);

/// What a document or a profile has of the record's value.
QString writtenText(const Setting &setting, Form form, EditorXmlData data);

/// The value, in words where there are some; the entries of a list with ";" between them.
QString valueOf(const Setting &setting, const EditorXmlData &data, const Product &product);

/// Sets the value that the text says, and what depends on it. A problem when the product does not have the
/// setting or the text is no such value; the record is then as it was.
Result<> take(const Setting &setting, const QString &text, const Product &product, EditorXmlData &data);

/// Sets the default, and what depends on it.
void takeDefault(const Setting &setting, EditorXmlData &data);

/// The entries of a text with such a list, as they stand, empty ones left out.
QStringList entriesOf(Setting::Entries entries, const QString &text);

/// Whether this is a list of file types and their levels, or what is wrong with it. An empty list is sound.
Result<> checkFileTypes(const QString &list);

} // namespace SettingText
