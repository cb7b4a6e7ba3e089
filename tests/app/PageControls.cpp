// SPDX-License-Identifier: Apache-2.0
#include "tests/app/PageControls.h"

#include "app/DlgCustomizationTool_v2.h"
#include "pages/PXCheckBox.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTextEdit>
#include <QTreeWidget>

namespace {

using Window = DlgCustomizationTool_v2;

/// The leaf that a user reaches first in one of the top branches.
QTreeWidgetItem *firstLeaf(const QTreeWidget &tree, int branch)
{
    QTreeWidgetItem *item = tree.topLevelItem(0);
    if (item && item->child(branch))
        item = item->child(branch);
    while (item && item->childCount() > 0)
        item = item->child(0);
    return item;
}

bool tickInTree(const Window &window, int treeIndex, int branch)
{
    const QTreeWidget *tree = window.findChildren<QTreeWidget *>().value(treeIndex);
    QTreeWidgetItem *item = tree ? firstLeaf(*tree, branch) : nullptr;
    if (item)
        item->setCheckState(0, Qt::Checked);
    return item;
}

bool markPlugin(QListWidget *list, int row)
{
    auto *box = qobject_cast<PXCheckBox *>(list->itemWidget(list->item(row)));
    if (box)
        box->setCheckState(Qt::Checked);
    return box;
}

bool addDomains(const Window &window, QLineEdit *line, const QString &domains)
{
    line->setText(domains);
    window.findChild<QPushButton *>(QStringLiteral("btn_add_domain"))->click();
    return line->text().isEmpty();
}

} // namespace

QList<PageControls::Setting> PageControls::settingsOf(bool editor)
{
    QList<Setting> settings;
    const auto add = [&settings](const char *control, const QStringList &values) {
        for (const QString &value : values)
            settings.append({control, value});
    };
    const QStringList offAndOn = {QStringLiteral("0"), QStringLiteral("1")};
    const QStringList three = offAndOn + QStringList(QStringLiteral("2"));
    for (const char *box : {"checkBox_showStartPg", "cb_UseExternalBrowserForSSO", "rb_disableopenfile_all"})
        add(box, offAndOn);
    add("cb_aip_options", three);
    add("cb_auth_lib_options", offAndOn);
    add("cb_fileattachmentsMode", three);
    add("tt_defaultLaunchAttachmentPerms", {QString(), QStringLiteral("version:1|.exe:2|.txt:3")});
    add("listWidget_pluginList", three);
    add("tree 0", three);
    add("tree 1", three);
    if (!editor)
        return settings;
    for (const char *box : {"checkBox_removeAdvertise", "cb_biManageLogin", "cb_hidemyapps", "cb_defaultpdf"})
        add(box, offAndOn);
    add("cb_allowed_whitelist", {QStringLiteral("1")});
    add("cb_disallowed_blacklist", {QStringLiteral("1")});
    add("lineEdit_domain", {QStringLiteral("@example.org"), QStringLiteral("@a.example.org;@b.example.org")});
    return settings;
}

bool PageControls::give(const Window &window, const Setting &setting)
{
    const QString name = QLatin1String(setting.control);
    if (name.startsWith(QLatin1String("tree ")))
        return tickInTree(window, name.mid(5).toInt(), setting.value.toInt());
    auto *control = window.findChild<QWidget *>(name);
    if (auto *button = qobject_cast<QAbstractButton *>(control)) {
        button->setChecked(setting.value == QLatin1String("1"));
        return true;
    }
    if (auto *combo = qobject_cast<QComboBox *>(control)) {
        combo->setCurrentIndex(setting.value.toInt());
        return combo->currentIndex() == setting.value.toInt();
    }
    if (auto *text = qobject_cast<QTextEdit *>(control)) {
        text->setPlainText(setting.value);
        return true;
    }
    if (auto *list = qobject_cast<QListWidget *>(control))
        return markPlugin(list, setting.value.toInt());
    auto *line = qobject_cast<QLineEdit *>(control);
    return line && addDomains(window, line, setting.value);
}
