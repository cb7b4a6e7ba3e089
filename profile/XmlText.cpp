// SPDX-License-Identifier: Apache-2.0
#include "profile/XmlText.h"

#include <algorithm>

QString xmlText(const QString &text)
{
    QString kept = QString::fromStdU32String(text.toStdU32String()); // which replaces half a pair
    const auto end = std::remove_if(kept.begin(), kept.end(), [](QChar c) { return !isXmlCharacter(c); });
    kept.truncate(static_cast<int>(end - kept.begin()));
    return kept;
}
