// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QJsonObject>

// The settings as `pct show --json` prints them, written down by hand.

inline QJsonObject shownDefaults()
{
    return {{QStringLiteral("bShowStartPage"), true},
            {QStringLiteral("bRemoveAdvertise"), false},
            {QStringLiteral("strDisableOpenSaveFileAttach"), QStringLiteral("Default")},
            {QStringLiteral("nFileAttachmentsMode"), -1},
            {QStringLiteral("strBuiltInPermList"), QString()},
            {QStringLiteral("bDisableOpenFileAll"), false},
            {QStringLiteral("strUnloadPluginArray"), QString()},
            {QStringLiteral("bMIPCheckPolicySet"), false},
            {QStringLiteral("nMIPCheckPolicyOnDocSave"), -1},
            {QStringLiteral("nAuthLibrary"), 0},
            {QStringLiteral("bHideMyApps"), false},
            {QStringLiteral("bSupportExtSSO"), false},
            {QStringLiteral("elemRibbonCategory"), QJsonValue()},
            {QStringLiteral("elemQuickAccessBar"), QJsonValue()},
            {QStringLiteral("bUseOAuth2"), false},
            {QStringLiteral("strLoginDomain"), QStringLiteral("1")},
            {QStringLiteral("strLoginDomainList"), QString()},
            {QStringLiteral("bSetAsDefaultViewer"), true}};
}

/// The defaults but for some values.
inline QJsonObject shownWith(const QJsonObject &values)
{
    QJsonObject shown = shownDefaults();
    for (auto value = values.begin(); value != values.end(); ++value)
        shown[value.key()] = value.value();
    return shown;
}

/// Without what no profile has a place for.
inline QJsonObject asAProfileShows(QJsonObject shown)
{
    shown.remove(QStringLiteral("strDisableOpenSaveFileAttach"));
    shown.remove(QStringLiteral("bSetAsDefaultViewer"));
    return shown;
}
