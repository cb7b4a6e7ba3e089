// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileForm.h"

#include <algorithm>

namespace {

/// The value whose word this is; that of the first word otherwise.
template <typename Value> Value valueOf(const QString &word, const QStringList &words)
{
    return static_cast<Value>(std::max<int>(0, static_cast<int>(words.indexOf(word))));
}

} // namespace

QStringList ProfileForm::styleWords()
{
    return {QStringLiteral("payload"), QStringLiteral("mcx")};
}

QString ProfileForm::wordOf(Style style)
{
    return styleWords().at(static_cast<int>(style));
}

ProfileForm::Style ProfileForm::styleOf(const QString &word)
{
    return valueOf<Style>(word, styleWords());
}

ProfileForm::Scope ProfileForm::scopeOf(const QString &word)
{
    const auto is = [&](const char *name) {
        return word.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    };
    if (is("system"))
        return Scope::System;
    return is("user") ? Scope::User : Scope::Unsaid;
}

QStringList settingsFormWords()
{
    return {QStringLiteral("jamf"), QStringLiteral("intune"), QStringLiteral("workspace-one")};
}

QString wordOf(SettingsForm form)
{
    return settingsFormWords().at(static_cast<int>(form));
}

SettingsForm settingsFormOf(const QString &word)
{
    return valueOf<SettingsForm>(word, settingsFormWords());
}
