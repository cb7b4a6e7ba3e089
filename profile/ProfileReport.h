// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"
#include "core/Result.h"

#include <QByteArray>
#include <QList>
#include <QString>

/// What `system_profiler SPConfigurationProfileDataType -xml` tells of the installed profiles, to everybody
/// and of the user and the device alike. Values of settings are in it as a text without their types.
namespace ProfileReport {

struct Payload
{
    QString type;
    QString identifier;
    QString uuid;
    QString settings;           ///< an old-style property list
    ProfilePayloadInfo profile; ///< of the profile that holds the payload
};

/// The payloads of all profiles in all sections; a problem when the report is damaged.
Result<QList<Payload>> payloads(const QByteArray &report);

} // namespace ProfileReport
