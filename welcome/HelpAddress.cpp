// SPDX-License-Identifier: Apache-2.0
#include "welcome/HelpAddress.h"

QUrl helpAddress(const QString &applicationFolder, const QString &encodedName)
{
    // The name is encoded already: encoding it with the folder would turn its %20 into %2520.
    const QString folder = QStringLiteral("%1/../Resources/pcw/en-US/").arg(applicationFolder);
    const QByteArray encoded = QUrl::fromLocalFile(folder).toEncoded() + encodedName.toUtf8();
    return QUrl::fromEncoded(encoded);
}
