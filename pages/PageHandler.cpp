// SPDX-License-Identifier: Apache-2.0
#include "pages/PageHandler.h"

#include <QUrl>

QString encodedHelpPage(const QString &fileName)
{
    return QUrl(fileName).toString(QUrl::FullyEncoded);
}
