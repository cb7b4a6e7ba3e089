// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"
#include "pages/ICutsomizationHandler.h"

#include <QPointer>
#include <QStringList>
#include <QVariantMap>

#include <memory>

/// A page whose answers a test chooses and which remembers what it was asked.
class FakeHandler : public ICutsomizationHandler
{
public:
    explicit FakeHandler(int id)
        : m_id(id)
    {
    }

    int GetTabId() override { return m_id; }
    QString GetTabName() override { return QStringLiteral("page-%1").arg(m_id); }
    QString GetTabTitle() const override { return QStringLiteral("Title <%1>").arg(m_id); }
    QString GetTabTooltip() const override { return QStringLiteral("About page %1").arg(m_id); }
    QString GetTabIcon() override { return QStringLiteral(":/img/plugins.png"); }
    bool IsOnlyForEditor() override { return m_onlyForEditor; }
    bool SupportsProfile() override { return m_supportsProfile; }
    QVariant GetProperty(const QString &objectName) override
    {
        m_asked << objectName;
        return m_values.value(objectName);
    }
    bool ImportProperty(QWidget *page, const EditorXmlData *data) override
    {
        ++m_imports;
        return page && data;
    }
    void OnError(const QString &objectName) override { m_errors << objectName; }
    QWidget *GetWidget(bool create) override
    {
        if (create && !m_page)
            m_page = new CTabWidget;
        return m_page;
    }
    QString GetInfoName() override { return m_infoName; }
    void OnBeforeSave() override
    {
        m_asked << QStringLiteral("OnBeforeSave");
        if (m_onBeforeSave)
            m_onBeforeSave();
    }

    int m_id;
    bool m_onlyForEditor = false;
    bool m_supportsProfile = true;
    QString m_infoName;
    QVariantMap m_values;
    std::function<void()> m_onBeforeSave;

    QPointer<CTabWidget> m_page;
    QStringList m_asked; ///< names asked for, and "OnBeforeSave", in order
    QStringList m_errors;
    int m_imports = 0;
};
