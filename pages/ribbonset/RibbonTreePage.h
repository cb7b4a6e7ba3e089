// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"

#include <memory>

namespace Ui {
class RibbonTreePage;
}
class QDomElement;
class QDomNode;
class QTreeWidget;
class QTreeWidgetItem;
struct EditorXmlData;

/// What both sub-pages of the Ribbon Set page are: a tree of the ribbon, in which what is ticked will be
/// hidden, below a line that narrows it.
class RibbonTreePage : public CTabWidget
{
    Q_OBJECT

public:
    ~RibbonTreePage() override;

    /// Makes the tree show what a fragment of a configuration document hides.
    void showHidden(const QDomElement &fragment);

    /// Writes what is ticked into the window's live record.
    void OnBeforeSave();

    /// Writes what is ticked into a record. Reads the items only, so that it may run in the build's worker.
    virtual void keepIn(EditorXmlData &record) const = 0;

protected:
    RibbonTreePage(const QString &title, const QString &hint, QWidget *parent);

    /// Fills the tree from the ribbon definition; it stays empty when there is no such definition.
    void BuildRibbonsetTree();

    QTreeWidgetItem *treeRoot() const;

private:
    class Change;

    /// Adds what the definition's element and those below it stand for.
    virtual void parseXml(const QDomNode &node, QTreeWidgetItem *parent) = 0;
    /// Called when the tree is complete.
    virtual void treeBuilt() {}
    /// Brings other items into line with one whose state was just changed.
    virtual void spreadState(QTreeWidgetItem *item) = 0;
    virtual void applyFragment(const QDomElement &fragment) = 0;

    void onItemChanged(QTreeWidgetItem *item, int column);
    void tellOfUnseen(QTreeWidgetItem *item);

    const std::unique_ptr<Ui::RibbonTreePage> m_ui;
    bool m_changing = false; ///< set while changes are the page's own and not the user's
};
