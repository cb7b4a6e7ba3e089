// SPDX-License-Identifier: Apache-2.0
#include "tests/app/PageControls.h"

#include "app/DlgCustomizationTool_v2.h"
#include "config/SettingItems.h"
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

/// What a user can give a box or a list of choices; nothing for the other controls.
QStringList valuesOf(const Setting &setting)
{
    QStringList values;
    const auto shown = setting.control.shown(EditorXmlData());
    const int count = std::holds_alternative<bool>(shown) ? 2 : static_cast<int>(setting.choices.size());
    for (int value = 0; value < count; ++value)
        values += QString::number(value);
    return values;
}

} // namespace

QList<PageControls::Entry> PageControls::entriesOf(bool editor)
{
    QList<Entry> entries;
    const auto add = [&entries](const char *control, const QStringList &values) {
        for (const QString &value : values)
            entries.append({control, value});
    };
    for (const Setting *setting : settingsInTurns()) {
        if (editor || !setting->isOnlyForEditor)
            add(setting->control.name.data(), valuesOf(*setting));
    }
    const QStringList three = {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")};
    add("tt_defaultLaunchAttachmentPerms", {QString(), QStringLiteral("version:1|.exe:2|.txt:3")});
    add("listWidget_pluginList", three);
    add("tree 0", three);
    add("tree 1", three);
    if (!editor)
        return entries;
    add("cb_disallowed_blacklist", {QStringLiteral("1")});
    add("lineEdit_domain", {QStringLiteral("@example.org"), QStringLiteral("@a.example.org;@b.example.org")});
    return entries;
}

bool PageControls::give(const Window &window, const Entry &entry)
{
    const QString name = QLatin1String(entry.control);
    if (name.startsWith(QLatin1String("tree ")))
        return tickInTree(window, name.mid(5).toInt(), entry.value.toInt());
    auto *control = window.findChild<QWidget *>(name);
    if (auto *button = qobject_cast<QAbstractButton *>(control)) {
        button->setChecked(entry.value == QLatin1String("1"));
        return true;
    }
    if (auto *combo = qobject_cast<QComboBox *>(control)) {
        combo->setCurrentIndex(entry.value.toInt());
        return combo->currentIndex() == entry.value.toInt();
    }
    if (auto *text = qobject_cast<QTextEdit *>(control)) {
        text->setPlainText(entry.value);
        return true;
    }
    if (auto *list = qobject_cast<QListWidget *>(control))
        return markPlugin(list, entry.value.toInt());
    auto *line = qobject_cast<QLineEdit *>(control);
    return line && addDomains(window, line, entry.value);
}
