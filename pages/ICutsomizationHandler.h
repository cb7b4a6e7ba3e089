// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVariant>

class QWidget;
struct EditorXmlData;

/// A page of the main window: makes its widget on demand, says where it goes, fills it from the record
/// and answers what its controls hold. Never owns its widget: whoever shows it does. User-interface
/// thread only, but for reading values while a package is being built behind a disabled window.
class ICutsomizationHandler
{
public:
    virtual ~ICutsomizationHandler() = default;

    /// Position of the page's button and key of the registry; unique.
    virtual int GetTabId() = 0;
    /// Object name of the page's button.
    virtual QString GetTabName() = 0;
    /// Text of the button and bold title of its tool tip.
    virtual QString GetTabTitle() const = 0;
    /// Body text of the button's tool tip.
    virtual QString GetTabTooltip() const = 0;
    /// Resource path of the button's icon.
    virtual QString GetTabIcon() = 0;
    /// Whether the page exists for the Editor only.
    virtual bool IsOnlyForEditor();
    /// Whether the page exists when a configuration profile is made.
    virtual bool SupportsProfile();
    /// Value of the page's control with that object name; invalid when the page has none.
    virtual QVariant GetProperty(const QString &objectName);
    /// Fills the page from the record. False when the handler has no page, when `page`
    /// is not of its class and when there is no record.
    virtual bool ImportProperty(QWidget *page, const EditorXmlData *data) = 0;
    /// Reports an error on the page. No page does so far.
    virtual void OnError(const QString &message);
    /// The page; `create` makes it when there is none. Null when there is none and none is wanted.
    virtual QWidget *GetWidget(bool create) = 0;
    /// File name of the page's help page, URL-encoded; empty for none.
    virtual QString GetInfoName() = 0;
    /// Last chance to write page state into the record before it is saved.
    virtual void OnBeforeSave();
};
