// SPDX-License-Identifier: Apache-2.0
#include "config/ConfigDocument.h"
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "tests/config/RecordSamples.h"
#include "tests/support/ProblemText.h"
#include "tests/support/TestFiles.h"

#include <QDomDocument>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// A ribbon whose indented text is more than two hundred times as long as it was.
QByteArray wideAndDeepRibbon()
{
    constexpr int depth = 240;
    return "<RibbonUI>" + QByteArray("<a>").repeated(depth) + QByteArray("<b/>").repeated(60000) +
           QByteArray("</a>").repeated(depth) + "</RibbonUI>";
}

} // namespace

/// What is saved can be read again, or nothing is saved.
class tst_ConfigDocumentSaving : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_settings = EditorXmlData();
        TestFiles::write(m_path, "from before");
    }

    void whatNoReaderTakesIsNotSaved_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("control character") << QStringLiteral("a\u0001b");
        QTest::newRow("escape") << QStringLiteral("\u001b[2J");
        QTest::newRow("delete") << QStringLiteral("a\u007f");
        QTest::newRow("NUL") << QString(QChar(0));
        QTest::newRow("U+FFFE") << QString(QChar(0xfffe));
        QTest::newRow("U+FFFF") << QString(QChar(0xffff));
        QTest::newRow("first half of a pair") << QString(QChar(0xd83d));
        QTest::newRow("second half of a pair") << QStringLiteral("a") + QChar(0xde00);
    }

    void whatNoReaderTakesIsNotSaved()
    {
        QFETCH(QString, text);
        m_settings.strBuiltInPermList = text;
        const QString error = problemText(save());
        QVERIFY2(error.startsWith(QStringLiteral("what is to be written could not be read again")),
                 qPrintable(error));
        QCOMPARE(TestFiles::read(m_path), QByteArray("from before"));
    }

    void whatGrowsBeyondTheReadersLimitIsNotSaved()
    {
        m_settings.elemRibbonCategory = RecordSamples::element(wideAndDeepRibbon());
        m_settings.elemQuickAccessBar = RecordSamples::element("<QuickAccessBar/>");
        const QString error = problemText(save());
        QVERIFY2(error.contains(QStringLiteral("larger than 32 MiB")), qPrintable(error));
        QCOMPARE(TestFiles::read(m_path), QByteArray("from before"));
    }

    void whatReadsBackOtherwiseIsNotSaved_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::newRow("a name that holds an attribute") << QStringLiteral("a b=\"c\"") << QString();
        QTest::newRow("a name that ends its element") << QStringLiteral("a/><b") << QString();
        QTest::newRow("a text with half a pair") << QStringLiteral("a") << QString(QChar(0xd800));
    }

    void whatReadsBackOtherwiseIsNotSaved()
    {
        QFETCH(QString, name);
        QFETCH(QString, text);
        QDomDocument document;
        QDomElement root = document.createElement(QStringLiteral("root"));
        document.appendChild(root);
        QDomElement child = document.createElement(name);
        root.appendChild(child);
        if (!text.isEmpty())
            child.appendChild(document.createTextNode(text));
        QVERIFY(!problemText(ConfigDocument::save(document, m_path)).isEmpty());
        QCOMPARE(TestFiles::read(m_path), QByteArray("from before"));
    }

    void whatXmlCanHoldSurvives_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("markup") << QStringLiteral("<a href='x'>&amp;\"</a>]]>");
        QTest::newRow("line ends and tabs") << QStringLiteral("\ta\nb\rc\r\nd ");
        QTest::newRow("blanks at both ends") << QStringLiteral("  a  ");
        QTest::newRow("a byte order mark first") << QStringLiteral("\ufeff.exe:3");
        QTest::newRow("beyond the first plane") << QStringLiteral("\U0001F600 \U0010FFFD");
        QTest::newRow("C1 and format characters") << QStringLiteral("\u0085\u009b\u202e\u2028");
    }

    /// Another reader than ours judges.
    void whatXmlCanHoldSurvives()
    {
        QFETCH(QString, text);
        m_settings.strBuiltInPermList = text;
        QCOMPARE(problemText(save()), QString());
        const QString script =
            QStringLiteral("import sys, xml.etree.ElementTree as tree\n"
                           "found = tree.parse(sys.argv[1]).find('.//*[@BuiltInPermList]')\n"
                           "sys.stdout.write(found.get('BuiltInPermList').encode('utf-8').hex())\n");
        const QByteArray read =
            TestFiles::outputOf(QStringLiteral("/usr/bin/python3"), {QStringLiteral("-c"), script, m_path});
        QCOMPARE(read, text.toUtf8().toHex());
    }

    void ribbonsWithTextsCommentsAndSectionsAreSaved()
    {
        m_settings.elemRibbonCategory = RecordSamples::element(
            "<RibbonUI xmlns:x='urn:x'>one<Category x:id='1'> two <!-- note --><![CDATA[<three>]]>"
            "<Panel>\n  four\n</Panel>five</Category>\n<?target data?>six</RibbonUI>");
        m_settings.elemQuickAccessBar = RecordSamples::element("<QuickAccessBar> </QuickAccessBar>");
        QCOMPARE(problemText(save()), QString());
        TestFiles::outputOf(QStringLiteral("xmllint"), {QStringLiteral("--noout"), m_path});
    }

    void savingRefusesALink()
    {
        const QString link = m_folder.filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(m_path, link));
        const QDomDocument document = ConfigDocument::fromSettings(m_settings, Product::editor(), QString());
        QCOMPARE(problemText(ConfigDocument::save(document, link)), QStringLiteral("is a link"));
        QCOMPARE(TestFiles::read(m_path), QByteArray("from before"));
    }

private:
    Result<> save() const
    {
        return ConfigDocument::save(
            ConfigDocument::fromSettings(m_settings, Product::editor(), QStringLiteral("13.1")), m_path);
    }

    EditorXmlData m_settings;
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("ProfStore.xml"));
};

QTEST_GUILESS_MAIN(tst_ConfigDocumentSaving)
#include "tst_ConfigDocumentSaving.moc"
