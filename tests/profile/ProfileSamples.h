// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"

#include <QByteArray>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QStringList>

/// Records and property lists that the profile tests start from.
namespace ProfileSamples {

/// An XML property list around a value.
QByteArray propertyList(const QByteArray &value);

/// `<dict>` of alternating keys and XML values.
QByteArray dictionary(const QList<QByteArray> &keysAndValues);
QByteArray string(const QByteArray &text);
QByteArray array(const QByteArray &items);

/// A `Preference` item with further keys.
QByteArray preference(const QByteArray &text, const QList<QByteArray> &keysAndValues);

/// A profile file with one payload of that identifier and the given contents.
QByteArray profileFile(const QByteArray &bundleIdentifier, const QByteArray &keysAndValues = {});

/// An installed profile as the system lists it; an empty identity member is left out.
QByteArray installedProfile(const QByteArray &bundleIdentifier, const QByteArray &identifier,
                            const QByteArray &uuid, const QByteArray &content);

/// The output of the system's command for some installed profiles.
QByteArray listing(const QByteArray &profiles);

/// A record with every setting, the identity included, drawn at random.
EditorXmlData randomRecord(QRandomGenerator &random);

/// What a record is after it has travelled through a profile of the product.
EditorXmlData throughProfile(EditorXmlData data, bool editor);

/// What Python reads in a property list of any format. It shares no code with Foundation.
QJsonObject readByPython(const QByteArray &propertyList);

/// The settings payload of a profile as readByPython() gives it.
QJsonObject payloadOf(const QJsonObject &profile);

extern const QByteArray editorBundle;
extern const QByteArray readerBundle;

} // namespace ProfileSamples
