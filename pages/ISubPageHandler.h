// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVariant>

class QWidget;
struct EditorXmlData;

/// What the handlers of sub-pages have in common: the same as a page's handler has, but for what only the
/// main window shows. Never owns its widget.
class ISubPageHandler
{
public:
    virtual ~ISubPageHandler() = default;

    /// Key of the sub-page in its parent page; unique there.
    virtual int GetTabId() = 0;
    /// Text of the sub-page's row or button in the parent page.
    virtual QString GetTabTitle() const = 0;
    /// Body text of a tool tip; empty for none.
    virtual QString GetTabTooltip() = 0;
    /// Whether the sub-page exists for the Editor only.
    virtual bool IsOnlyForEditor() = 0;
    /// Value of the control with that object name; invalid when the handler has none to give.
    virtual QVariant GetProperty(const QString &objectName) = 0;
    /// Fills the sub-page from the record. False when the handler has no sub-page, when `page` is not of
    /// its class and when there is no record.
    virtual bool ImportProperty(QWidget *page, const EditorXmlData *data) = 0;
    /// The sub-page; `create` makes it when there is none. Null when there is none and none is wanted.
    virtual QWidget *GetWidget(bool create) = 0;
    /// Anchor of the sub-page inside the parent page's help page; empty for none.
    virtual QString GetInfoAnchorId() = 0;
};

/// A sub-page of the Preferences page.
class IPreferenceHandler : public ISubPageHandler
{
public:
    /// Invalid: the parent page finds plain controls by itself, because the sub-page lies inside it.
    QVariant GetProperty(const QString &objectName) override;
};

/// A sub-page of the Ribbon Set page.
class IRibbonSetHandler : public ISubPageHandler
{
public:
    /// Value of the sub-page's control with that object name; invalid when there is none.
    QVariant GetProperty(const QString &objectName) override;
    /// Writes the sub-page's state into the record before it is saved.
    virtual void OnBeforeSave() = 0;
};
