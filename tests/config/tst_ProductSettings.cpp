// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/DefaultPlugins.h"
#include "config/KeptElement.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "config/Settings.h"
#include "resources/Resources.h"
#include "tests/config/RecordSamples.h"
#include "tests/config/SettingOracle.h"

#include <QtTest>

class tst_ProductSettings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }

    void theEditorKeepsEverySetting()
    {
        EditorXmlData data = RecordSamples::everythingChanged();
        data.strDisableOpenSaveFileAttach = QStringLiteral("Disabled");
        const EditorXmlData result = settingsForProduct(data, Product::editor());
        for (const Setting &setting : settings())
            QVERIFY2(sameValue(setting, result, data), setting.name.data());
    }

    void theReaderLosesWhatOnlyTheEditorOffers()
    {
        const EditorXmlData data = RecordSamples::everythingChanged();
        const EditorXmlData result = settingsForProduct(data, Product::reader());
        EditorXmlData wanted = data;
        wanted.strLoginDomain = QStringLiteral("2");
        for (const Setting &setting : settings()) {
            if (SettingOracle::lostByTheReader().contains(setting.name))
                reset(setting, wanted);
        }
        for (const Setting &setting : settings())
            QVERIFY2(sameValue(setting, result, wanted), setting.name.data());
    }

    void attachmentModeOfADocumentIsCarriedOn_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("mode");
        QTest::newRow("0") << QStringLiteral("0") << 1;
        QTest::newRow("1") << QStringLiteral("1") << 2;
        QTest::newRow("Default") << QStringLiteral("Default") << -1;
        QTest::newRow("Enabled") << QStringLiteral("Enabled") << 1;
        QTest::newRow("Disabled") << QStringLiteral("Disabled") << 2;
        QTest::newRow("another case") << QStringLiteral("enabled") << -1;
        QTest::newRow("empty") << QString() << -1;
        QTest::newRow("negative") << QStringLiteral("-1") << -1;
        QTest::newRow("largest") << QStringLiteral("2147483647") << -1;
    }

    void attachmentModeOfADocumentIsCarriedOn()
    {
        QFETCH(QString, text);
        EditorXmlData data;
        data.strDisableOpenSaveFileAttach = text;
        QTEST(settingsForProduct(data, Product::editor()).nFileAttachmentsMode, "mode");
    }

    void pluginsComeInDisplayOrderOnceAndUnknownOnesLast()
    {
        const auto plugins = CCommon::EditorXmlReadPluginsTemplate(true);
        const QString first = plugins.at(0).path;
        const QString third = plugins.at(2).path;
        EditorXmlData data;
        data.strUnloadPluginArray =
            QStringList({QStringLiteral("Own.dylib"), third, QString(), first, third}).join(QLatin1Char(';'));
        QCOMPARE(settingsForProduct(data, Product::editor()).strUnloadPluginArray,
                 first + QLatin1Char(';') + third + QStringLiteral(";Own.dylib;"));
    }

    void aRibbonThatIsAsShippedBecomesEmptyElements()
    {
        const EditorXmlData result = settingsForProduct(EditorXmlData(), Product::reader());
        QCOMPARE(elementText(result.elemRibbonCategory), QStringLiteral("<RibbonUI/>"));
        QCOMPARE(elementText(result.elemQuickAccessBar), QStringLiteral("<QuickAccessBar/>"));
    }

    void aQuickAccessBarAloneIsKept()
    {
        EditorXmlData data;
        data.elemQuickAccessBar =
            RecordSamples::element("<QuickAccessBar><control action='a'/></QuickAccessBar>");
        const EditorXmlData result = settingsForProduct(data, Product::editor());
        QCOMPARE(elementText(result.elemRibbonCategory), QStringLiteral("<RibbonUI/>"));
        QCOMPARE(elementText(result.elemQuickAccessBar),
                 QStringLiteral("<QuickAccessBar><control action=\"a\"/></QuickAccessBar>"));
    }

    void noPluginsStayNone()
    {
        EditorXmlData data;
        data.strUnloadPluginArray = QStringLiteral(";;");
        QVERIFY(settingsForProduct(data, Product::reader()).strUnloadPluginArray.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_ProductSettings)
#include "tst_ProductSettings.moc"
