// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/ICutsomizationHandler.h"
#include "pages/PageHandler.h"
#include "pages/preferences/tab_preference.h"

#include <QCoreApplication>

/// The Preferences page: how the product behaves, in one sub-page for each subject.
class CHandler_Preference : public PageHandler<ICutsomizationHandler, tab_preference>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Preference)

public:
    using PageHandler::PageHandler;

    int GetTabId() override;
    QString GetTabName() override;
    QString GetTabTitle() const override;
    QString GetTabTooltip() const override;
    QString GetTabIcon() override;
    bool SupportsProfile() override;
    /// Looks through the page's controls first, then asks the sub-pages in the order of their ids.
    QVariant GetProperty(const QString &objectName) override;
    /// The page's help, at the anchor of the sub-page that is shown if that has one.
    QString GetInfoName() override;

protected:
    tab_preference *makePage() const override;
    void fillPage(tab_preference &page, const EditorXmlData &data) override;
};
