// SPDX-License-Identifier: Apache-2.0
#include "tests/app/looks/SampleSettings.h"

#include "config/KeptElement.h"

#include <QDomDocument>

namespace {

QDomElement elementOf(const char *xml)
{
    QDomDocument document;
    document.setContent(QByteArray(xml));
    return keptElement(document.documentElement());
}

QDomElement hiddenRibbonItems()
{
    return elementOf("<RibbonUI><Category Text='Ribbon_Page_Bar' Hidden='0'>"
                     "<Panel Text='Ribbon_Group_FilePage' Hidden='0'>"
                     "<Control Text='Ribbon_Action_FilePage_Properties' Hidden='0'>"
                     "<SubItem Text='Description' Hidden='1'/><SubItem Text='Fonts' Hidden='1'/>"
                     "</Control></Panel></Category></RibbonUI>");
}

QDomElement quickAccessItems()
{
    return elementOf("<QuickAccessBar>"
                     "<control action='Ribbon_Action_Bar_Undo' page='Other' group='Other'/>"
                     "<control action='Ribbon_Action_Bar_Redo' page='Other' group='Other'/>"
                     "</QuickAccessBar>");
}

} // namespace

EditorXmlData sampleSettings(bool editor)
{
    EditorXmlData settings;
    settings.bRemoveAdvertise = editor;
    settings.bHideMyApps = editor;
    settings.bUseOAuth2 = editor;
    settings.bMIPCheckPolicySet = true;
    settings.nMIPCheckPolicyOnDocSave = 1;
    settings.nFileAttachmentsMode = 2;
    settings.bDisableOpenFileAll = true;
    settings.strBuiltInPermList = QStringLiteral(
        "version:1|.ade:3|.adp:3|.app:3|.arc:3|.bat:3|.command:3|.exe:3|.jar:3|.txt:2|.csv:1|");
    settings.strLoginDomainList = QStringLiteral("@example.com;@mail.example.org;@eu.example.net");
    settings.strUnloadPluginArray = QStringLiteral("PelixDigitalSignature.dylib;PelixSharedReview.dylib;");
    settings.elemRibbonCategory = hiddenRibbonItems();
    settings.elemQuickAccessBar = quickAccessItems();
    return settings;
}
