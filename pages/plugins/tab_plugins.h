// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/DefaultPlugins.h"
#include "pages/PageHandler.h"

#include <QCoreApplication>
#include <QList>

#include <functional>
#include <memory>

namespace Ui {
class tab_plugins;
}
class PXCheckBox;
class QListWidgetItem;

/// The product's plug-ins, each with a box to mark it.
class tab_plugins : public CTabWidget
{
    Q_OBJECT

public:
    /// Lists the plug-ins of the product (true = Editor), none marked.
    explicit tab_plugins(bool editor, QWidget *parent = nullptr);
    ~tab_plugins() override;

    /// Appends the product's plug-ins to the list; none when the product's list cannot be read.
    void EditorXmlInitPluginList(bool editor);

    /// The library names of the marked plug-ins in list order, each followed by ";".
    QString EditorXmlGetPluginList() const;

    /// Marks the plug-ins with these library names; the others stay as they are.
    void markPlugins(const QStringList &paths);

    /// Keeps the rows as wide as the list, and lets Escape empty the filter.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fitRows();
    void fitHeight();
    void appendRow(const _EditorXmlPuginData_ &plugin);
    void addMarkAction(const QString &text, const QKeySequence &keys,
                       const std::function<bool(bool isMarked)> &change);
    void narrow(const QString &text);
    void showCount();
    PXCheckBox *checkBoxOf(QListWidgetItem *row) const;

    const std::unique_ptr<Ui::tab_plugins> m_ui;
    QList<_EditorXmlPuginData_> m_plugins;
};

/// The Plugins page: which of the product's plug-ins are not to be loaded.
class CHandler_Plugins : public MainPageHandler<tab_plugins>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Plugins)

public:
    explicit CHandler_Plugins(bool editor);

    /// For "listWidget_pluginList" the marked plug-ins as EditorXmlGetPluginList gives them.
    QVariant GetProperty(const QString &objectName) override;

protected:
    void fillPage(tab_plugins &page, const EditorXmlData &data) override;
};
