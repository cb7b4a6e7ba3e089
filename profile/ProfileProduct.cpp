// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileProduct.h"

QString ProfileProduct::bundleIdentifier(bool editor)
{
    return editor ? QStringLiteral("com.pelix-software.Pelix.PDF.Editor")
                  : QStringLiteral("com.pelix-software.Pelix.PDF.Reader");
}

QString ProfileProduct::settingsType(bool editor)
{
    return bundleIdentifier(editor) + QStringLiteral(".settings");
}

QString ProfileProduct::displayName(bool editor)
{
    return editor ? QStringLiteral("Pelix PDF Editor") : QStringLiteral("Pelix PDF Reader");
}

QString ProfileProduct::organization()
{
    return QStringLiteral("Pelix Software Inc.");
}

QString ProfileProduct::description(bool editor)
{
    return QStringLiteral("The configuration info will apply to %1, only for Subscription versions 2025.1+, "
                          "and Classic 13.1.8+.")
        .arg(displayName(editor));
}
