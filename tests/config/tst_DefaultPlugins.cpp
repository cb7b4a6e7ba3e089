// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/DefaultPlugins.h"
#include "resources/Resources.h"

#include <QFile>
#include <QSet>
#include <QtTest>

/// Not in a namespace, because the resource system's macro declares functions.
static void dropResources()
{
    Q_CLEANUP_RESOURCE(customizationtool);
}

class tst_DefaultPlugins : public QObject
{
    Q_OBJECT

private slots:
    void init() { initPctResources(); }

    void aMissingListIsEmpty()
    {
        dropResources();
        QVERIFY(CCommon::EditorXmlReadPluginsTemplate(true).isEmpty());
        QVERIFY(CCommon::EditorXmlReadPluginsTemplate(false).isEmpty());
    }

    void eachProductHasItsList_data()
    {
        QTest::addColumn<bool>("editor");
        QTest::addColumn<int>("rows");
        QTest::newRow("Editor") << true << 23;
        QTest::newRow("Reader") << false << 16;
    }

    void eachProductHasItsList()
    {
        QFETCH(bool, editor);
        const auto plugins = CCommon::EditorXmlReadPluginsTemplate(editor);
        QTEST(int(plugins.size()), "rows");
        QSet<QString> paths;
        for (const _EditorXmlPuginData_ &plugin : plugins) {
            QVERIFY(!plugin.name.isEmpty());
            QVERIFY2(plugin.path.endsWith(QStringLiteral(".dylib")), qPrintable(plugin.path));
            QVERIFY(!plugin.path.contains(QLatin1Char(';')));
            paths.insert(plugin.path);
        }
        QCOMPARE(paths.size(), plugins.size());
    }

    void theFilesEndTheirLinesWithCrLf_data() { eachProductHasItsList_data(); }

    void theFilesEndTheirLinesWithCrLf()
    {
        QFETCH(bool, editor);
        QFile file(QStringLiteral("://EditorXml/EditorXml/DefaultPluginsList_PDF%1_Mac.xml")
                       .arg(editor ? QStringLiteral("Editor") : QStringLiteral("Reader")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QCOMPARE(bytes.count('\n'), bytes.count("\r\n"));
        QVERIFY(bytes.contains("<DefaultPluginsList version=\"1\">"));
    }

    void rowsAreOrderedByNameWithCase()
    {
        _EditorXmlPuginData_ upper{QStringLiteral("Zoom"), QString(), QString()};
        _EditorXmlPuginData_ lower{QStringLiteral("action"), QString(), QString()};
        QVERIFY(EditorXmlCompareFunc(upper, lower));
        QVERIFY(!EditorXmlCompareFunc(lower, upper));
        QVERIFY(!EditorXmlCompareFunc(upper, upper));
    }
};

QTEST_GUILESS_MAIN(tst_DefaultPlugins)
#include "tst_DefaultPlugins.moc"
