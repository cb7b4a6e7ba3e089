// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"
#include "app/RegisterPages.h"
#include "config/CCommon.h"
#include "config/ConfigDocument.h"
#include "config/RecordFields.h"
#include "pages/PXCheckBox.h"
#include "profile/CProfileGenerator.h"
#include "resources/Resources.h"
#include "tests/app/PrivatePlace.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDomDocument>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTextEdit>
#include <QTreeWidget>
#include <QtTest>

#include <memory>

namespace {

using Window = DlgCustomizationTool_v2;

/// One control and the value that a user gives it.
struct Setting
{
    const char *control;
    QString value;
};

QList<Setting> settingsOf(bool editor)
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

/// False when there is no such control or it does not take the value.
bool give(const Window &window, const Setting &setting)
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

/// A window as it comes up, with all its pages.
std::unique_ptr<Window> freshWindow(bool editor, PCW_CONFIGTYPE type)
{
    theEditorXmlData = EditorXmlData();
    auto window = std::make_unique<Window>(editor, type);
    registerPages(*window, editor);
    window->InitTabWidgets();
    return window;
}

EditorXmlData collect(Window &window)
{
    window.ReloadEditorXmlData();
    return theEditorXmlData;
}

} // namespace

/// Every control of every page, in both modes: what a user sets is still set after saving and loading.
class tst_EverySetting : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void aSettingSurvivesADocument_data() { addRows(PCW_CONFIG_PACKAGE); }
    void aSettingSurvivesADocument();
    void aSettingSurvivesAProfile_data() { addRows(PCW_CONFIG_PROFILE); }
    void aSettingSurvivesAProfile();
    void everyFieldHasAControl();

private:
    static void addRows(PCW_CONFIGTYPE type);
    static void compare(const EditorXmlData &actual, const EditorXmlData &expected);

    PrivatePlace m_place;
};

void tst_EverySetting::addRows(PCW_CONFIGTYPE type)
{
    QTest::addColumn<bool>("editor");
    QTest::addColumn<QByteArray>("control");
    QTest::addColumn<QString>("value");
    for (const bool editor : {true, false}) {
        for (const Setting &setting : settingsOf(editor)) {
            // The Installation Options page does not exist in profile mode.
            if (type == PCW_CONFIG_PROFILE && qstrcmp(setting.control, "cb_defaultpdf") == 0)
                continue;
            QTest::addRow("%s: %s = %s", editor ? "Editor" : "Reader", setting.control,
                          qUtf8Printable(setting.value))
                << editor << QByteArray(setting.control) << setting.value;
        }
    }
}

void tst_EverySetting::compare(const EditorXmlData &actual, const EditorXmlData &expected)
{
    for (const RecordField &field : recordFields())
        QVERIFY2(sameValue(field, actual, expected), field.name.data());
}

void tst_EverySetting::aSettingSurvivesADocument()
{
    QFETCH(bool, editor);
    QFETCH(QByteArray, control);
    QFETCH(QString, value);
    auto window = freshWindow(editor, PCW_CONFIG_PACKAGE);
    const EditorXmlData untouched = collect(*window);
    QVERIFY(give(*window, {control.constData(), value}));
    EditorXmlData expected = collect(*window);
    const QString path = m_place.path("ProfStore.xml");
    QVERIFY(ConfigDocument::save(ConfigDocument::fromRecord(editor, QStringLiteral("1.0")), path));

    window = freshWindow(editor, PCW_CONFIG_PACKAGE);
    QVERIFY(CCommon::ParseXml(path, &theEditorXmlData));
    window->UpdateTabWidgets();
    // A document says the mode as a permission, which the window's import does not turn back into a row.
    expected.nFileAttachmentsMode = untouched.nFileAttachmentsMode;
    compare(collect(*window), expected);
}

void tst_EverySetting::aSettingSurvivesAProfile()
{
    QFETCH(bool, editor);
    QFETCH(QByteArray, control);
    QFETCH(QString, value);
    auto window = freshWindow(editor, PCW_CONFIG_PROFILE);
    QVERIFY(give(*window, {control.constData(), value}));
    EditorXmlData expected = collect(*window);
    const QString path = m_place.path("saved.mobileconfig");
    QVERIFY(CProfileGenerator::CreateProfile(&expected, path, editor));

    window = freshWindow(editor, PCW_CONFIG_PROFILE);
    window->on_profileload(path);
    // A profile has an empty mode for a policy that is not set, which reads back as one set to 0.
    if (!expected.bMIPCheckPolicySet)
        expected.nMIPCheckPolicyOnDocSave = 0;
    expected.bMIPCheckPolicySet = true;
    compare(collect(*window), expected);
}

/// A new setting without a control, or without a row above, fails here.
void tst_EverySetting::everyFieldHasAControl()
{
    // Attachment permission is only read from documents; its control is the attachment mode's.
    QStringList reached = {QStringLiteral("strDisableOpenSaveFileAttach")};
    for (const Setting &setting : settingsOf(true)) {
        const auto window = freshWindow(true, PCW_CONFIG_PACKAGE);
        const EditorXmlData before = collect(*window);
        QVERIFY2(give(*window, setting), setting.control);
        const EditorXmlData after = collect(*window);
        for (const RecordField &field : recordFields()) {
            if (!sameValue(field, before, after))
                reached += field.name;
        }
    }
    for (const RecordField &field : recordFields())
        QVERIFY2(reached.contains(field.name), field.name.data());
}

QTEST_MAIN(tst_EverySetting)
#include "tst_EverySetting.moc"
