// SPDX-License-Identifier: Apache-2.0
#include "profile/CProfileGenerator.h"

#include "profile/LastOpenDirectory.h"
#include "profile/LocalHostName.h"

#include <QFileInfo>
#include <QUuid>

QString CProfileGenerator::GenPayloadIdentifier(QString *uuid)
{
    const QString fresh = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    if (uuid)
        *uuid = fresh;
    return QStringLiteral("%1.%2").arg(localHostName(), fresh);
}

QString CProfileGenerator::GetLastOpenDirectory()
{
    return readLastOpenDirectory();
}

void CProfileGenerator::SyncLastOpenDirectory(const QString &filePath)
{
    storeLastOpenDirectory(QFileInfo(filePath).absolutePath());
}
