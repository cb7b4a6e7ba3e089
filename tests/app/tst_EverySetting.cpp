// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"
#include "app/RegisterPages.h"
#include "config/CCommon.h"
#include "config/ConfigDocument.h"
#include "config/Product.h"
#include "config/Settings.h"
#include "profile/CProfileGenerator.h"
#include "resources/Resources.h"
#include "tests/app/PageControls.h"
#include "tests/app/PrivatePlace.h"

#include <QDomDocument>
#include <QtTest>

#include <memory>

namespace {

using namespace PageControls;
using Window = DlgCustomizationTool_v2;

/// A window as it comes up, with all its pages.
std::unique_ptr<Window> freshWindow(bool editor, PCW_CONFIGTYPE type)
{
    theEditorXmlData = EditorXmlData();
    auto window = std::make_unique<Window>(editor, type);
    registerPages(*window);
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
        for (const Entry &entry : entriesOf(editor)) {
            // The Installation Options page does not exist in profile mode.
            if (type == PCW_CONFIG_PROFILE && qstrcmp(entry.control, "cb_defaultpdf") == 0)
                continue;
            QTest::addRow("%s: %s = %s", editor ? "Editor" : "Reader", entry.control,
                          qUtf8Printable(entry.value))
                << editor << QByteArray(entry.control) << entry.value;
        }
    }
}

void tst_EverySetting::compare(const EditorXmlData &actual, const EditorXmlData &expected)
{
    for (const Setting &setting : settings())
        QVERIFY2(sameValue(setting, actual, expected), setting.name.data());
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
    QVERIFY(ConfigDocument::save(
        ConfigDocument::fromSettings(theEditorXmlData, Product::of(editor), QStringLiteral("1.0")), path));

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
    for (const Entry &entry : entriesOf(true)) {
        const auto window = freshWindow(true, PCW_CONFIG_PACKAGE);
        const EditorXmlData before = collect(*window);
        QVERIFY2(give(*window, entry), entry.control);
        const EditorXmlData after = collect(*window);
        for (const Setting &setting : settings()) {
            if (!sameValue(setting, before, after))
                reached += setting.name;
        }
    }
    for (const Setting &setting : settings())
        QVERIFY2(reached.contains(setting.name), setting.name.data());
}

QTEST_MAIN(tst_EverySetting)
#include "tst_EverySetting.moc"
