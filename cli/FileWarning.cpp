// SPDX-License-Identifier: Apache-2.0
#include "cli/FileWarning.h"

#include "cli/Product.h"

FileWarning otherProductWarning(const QString &document, const Product &made, const Product &wanted)
{
    return {document,
            {QStringLiteral("document-of-other-product"),
             QStringLiteral("is a document of the %1; settings that the %2 lacks are left out")
                 .arg(QString(made.title), QString(wanted.title))}};
}
