// SPDX-License-Identifier: Apache-2.0
// Writes the profile of somebody who ticked everything on both ribbon pages.
//
// usage: full_ribbon_profile FILE
#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "pages/ribbonset/tab_ribbonset_ribcate.h"
#include "pages/ribbonset/tab_ribbonset_tabelem.h"
#include "profile/CProfileGenerator.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QTreeWidget>

#include <cstdio>

namespace {

template <typename Page> void tickEverything()
{
    Page page;
    auto *tree = page.template findChild<QTreeWidget *>(QStringLiteral("treeWidget"));
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        tree->topLevelItem(i)->setCheckState(0, Qt::Checked);
    page.OnBeforeSave();
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    initPctResources();
    const QApplication application(argc, argv);
    const QString path = application.arguments().value(1);
    CCommon::SetPCWAppType(PCW_APP_EDITOR);
    tickEverything<tab_ribbonset_ribcate>();
    tickEverything<tab_ribbonset_tabelem>();
    theEditorXmlData.payloadInfo.PayloadIdentifier =
        CProfileGenerator::GenPayloadIdentifier(&theEditorXmlData.payloadInfo.PayloadUUID);
    if (CProfileGenerator::CreateProfile(&theEditorXmlData, path, true))
        return EXIT_SUCCESS;
    std::fprintf(stderr, "usage: full_ribbon_profile FILE\n");
    return EXIT_FAILURE;
}
