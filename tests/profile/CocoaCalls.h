// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"

#include <QByteArray>
#include <QDomElement>
#include <QString>

/// The class methods and bridge functions of the Cocoa layer, for test programs in plain C++. Dictionaries
/// travel as XML property lists; a null array stands for nil.
namespace CocoaCalls {

struct ParsedList
{
    int count = -1; ///< -1 for nil
    QString domain;
    int code = 0;
    QString description;
};

/// The text, or a null string for nil.
QString generateProfile(const EditorXmlData *data, bool editor);
ParsedList parsePlistXML(const QString &text);

/// Why a property list of any format holds no dictionary that can be read; empty when it does.
QString readingProblem(const QByteArray &list);

/// Number of profiles, or -1 for nil.
int loadSystemProfiles();

/// `groups` is what the system's command prints.
bool importProfiles(EditorXmlData *data, const QByteArray &groups, bool editor);
bool importProfile(EditorXmlData *data, const QByteArray &profile, bool editor);
void fillContent(EditorXmlData &data, const QByteArray &settings);

QByteArray dictionaryOf(const QDomElement &element);
QDomElement elementOf(const QString &name, const QByteArray &dictionary);

} // namespace CocoaCalls
