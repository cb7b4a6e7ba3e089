// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDomElement>
#include <QString>

/// The identity of a configuration profile; the members are named after its property-list keys.
struct ProfilePayloadInfo
{
    QString PayloadDisplayName;
    QString PayloadIdentifier;
    QString PayloadUUID;
    QString PayloadOrganization;
    QString PayloadDescription;
};

/// Every setting of a deployment. Each output is made from such a record and each input is read into one; a
/// record as constructed holds the defaults. What is known of each setting stands in config/Settings.
struct EditorXmlData
{
    bool bShowStartPage = true;    ///< show the start page at launch
    bool bRemoveAdvertise = false; ///< remove advertisements

    /// Attachment permission as a document says it: "Default", "Enabled", "Disabled" or a number.
    QString strDisableOpenSaveFileAttach = QStringLiteral("Default");
    int nFileAttachmentsMode = -1;    ///< index in the attachment mode list: 0 to 2, -1 = none
    QString strBuiltInPermList;       ///< file types and their permission levels, "version:1|.ext:level|…"
    bool bDisableOpenFileAll = false; ///< block every action in documents

    QString strUnloadPluginArray; ///< library names of the plug-ins not to load, joined with ";"

    bool bMIPCheckPolicySet = false;   ///< whether the policy below is set at all
    int nMIPCheckPolicyOnDocSave = -1; ///< MIP policy on save: 0 off, 1 on, -1 when not set
    int nAuthLibrary = 0;              ///< MIP sign-in library: 0 MSAL, 1 ADAL
    bool bHideMyApps = false;          ///< hide the applications area of the start screen
    bool bSupportExtSSO = false;       ///< use the external browser for single sign-on

    QDomElement elemRibbonCategory; ///< element "RibbonUI", null when the ribbon is as shipped
    QDomElement elemQuickAccessBar; ///< element "QuickAccessBar", null when it is as shipped

    bool bUseOAuth2 = false;                      ///< iManage 10 signs in with OAuth 2
    QString strLoginDomain = QStringLiteral("1"); ///< "1" = only listed domains, "2" = any domain
    QString strLoginDomainList;                   ///< login domains, joined with ";"
    bool bSetAsDefaultViewer = true;              ///< make the product the default PDF viewer

    ProfilePayloadInfo payloadInfo; ///< not part of the configuration document

    /// Resets what a save collects anew from the pages. The members that are not collected from every
    /// page (from nAuthLibrary and bHideMyApps to the payload's identity) keep their values.
    void Clear();
};

bool operator==(const ProfilePayloadInfo &first, const ProfilePayloadInfo &second);

/// Equal settings and identity; ribbon elements are compared by content, not by object.
bool operator==(const EditorXmlData &first, const EditorXmlData &second);

inline bool operator!=(const EditorXmlData &first, const EditorXmlData &second)
{
    return !(first == second);
}

/// The live record of the window and its pages, which nobody else writes. It exists from before `main` until
/// after it. It has no lock: it belongs to the user-interface thread, except while a package build collects
/// its settings, when it belongs to the worker.
extern EditorXmlData theEditorXmlData;
