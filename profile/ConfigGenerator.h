// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

struct EditorXmlData;

/// PelixPDFConfigGenerator for sources that know no Objective-C. Each call has its own autorelease scope.
namespace ConfigGenerator {

/// What an empty MIP policy on save means, which is how a profile writes one that is not set.
enum class EmptyPolicy {
    Off,   ///< set to 0, as the window reads it
    NotSet ///< not set, as it was written
};

enum class Import {
    Unreadable, ///< no property list, or the system's profiles could not be listed
    NoMatch,    ///< nothing there for the product; the record is as it was
    Filled
};

/// The profile text; null on failure, empty for a null record.
QString generate(const EditorXmlData *data, bool editor, QString *problem = nullptr);

/// Fills the record from profile text; `error` says why it is Unreadable.
Import importText(const QString &text, EditorXmlData &data, bool editor, QString &error);

/// Fills the record from profile data of either product; `editor` gets which. An empty policy stays not set.
/// False with `error` set.
bool importAny(const QByteArray &bytes, EditorXmlData &data, bool &editor, QString &error);

/// Fills the record from the product's installed profile. `problem` says why the system's profiles could
/// not be listed, and becomes empty when it has none.
Import importInstalled(EditorXmlData &data, bool editor, EmptyPolicy emptyPolicy, QString &problem);

/// Identity of the product's installed profile; what is not there stays as it was.
Import installedIdentity(bool editor, QString &identifier, QString &uuid);

} // namespace ConfigGenerator
