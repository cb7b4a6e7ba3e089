// SPDX-License-Identifier: Apache-2.0
#include "tests/config/RecordSamples.h"

#include "config/KeptElement.h"

QDomElement RecordSamples::element(const QByteArray &xml)
{
    QDomDocument document;
    if (!document.setContent(xml))
        qFatal("not well-formed: %s", xml.constData());
    return keptElement(document.documentElement());
}

EditorXmlData RecordSamples::everythingChanged()
{
    EditorXmlData data;
    data.bShowStartPage = false;
    data.bRemoveAdvertise = true;
    data.strDisableOpenSaveFileAttach = QStringLiteral("Disabled");
    data.nFileAttachmentsMode = 2;
    data.strBuiltInPermList = QStringLiteral("version:1|.ade:3|.app:3");
    data.bDisableOpenFileAll = true;
    data.strUnloadPluginArray = QStringLiteral("PelixOcr.dylib;");
    data.bMIPCheckPolicySet = true;
    data.nMIPCheckPolicyOnDocSave = 1;
    data.nAuthLibrary = 1;
    data.bHideMyApps = true;
    data.bSupportExtSSO = true;
    data.elemRibbonCategory = element("<RibbonUI><Category Text=\"Home\" Hidden=\"1\"/></RibbonUI>");
    data.elemQuickAccessBar = element("<QuickAccessBar><control action=\"A\"/></QuickAccessBar>");
    data.bUseOAuth2 = true;
    data.strLoginDomain = QStringLiteral("2");
    data.strLoginDomainList = QStringLiteral("@example.com;@example.org");
    data.bSetAsDefaultViewer = false;
    return data;
}
