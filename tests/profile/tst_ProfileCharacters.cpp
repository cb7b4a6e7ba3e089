// SPDX-License-Identifier: Apache-2.0
#include "profile/CProfileGenerator.h"
#include "profile/ReadProfile.h"
#include "tests/config/RecordSamples.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/profile/StandIns.h"

#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>

#include <string>

using namespace ProfileSamples;

namespace {

QString allFrom(char32_t first, char32_t last)
{
    std::u32string text;
    for (char32_t character = first; character <= last; ++character)
        text += character;
    return QString::fromStdU32String(text);
}

/// A record that holds the text wherever one can be typed.
EditorXmlData recordWith(const QString &text)
{
    EditorXmlData data;
    data.strLoginDomainList = text;
    data.strUnloadPluginArray = text;
    data.payloadInfo.PayloadIdentifier = text;
    data.elemRibbonCategory = RecordSamples::element("<RibbonUI/>");
    data.elemRibbonCategory.setAttribute(QStringLiteral("x"), text);
    return data;
}

QStringList textsOf(const EditorXmlData &data)
{
    return {data.strLoginDomainList, data.strUnloadPluginArray, data.payloadInfo.PayloadIdentifier,
            data.elemRibbonCategory.attribute(QStringLiteral("x"))};
}

QStringList textsOf(const QJsonObject &profile)
{
    const QJsonObject payload = payloadOf(profile);
    const QJsonValue domains = payload[QLatin1String("Preferences")].toArray().at(8);
    const QJsonValue plugins = payload[QLatin1String("Plugins")].toArray().at(0);
    const QJsonValue ribbon = payload[QLatin1String("RibbonSetRibbonCategory")][QLatin1String("RibbonUI")];
    return {domains[QLatin1String("Preference")][QLatin1String("String")].toString(),
            plugins[QLatin1String("Plugin")][QLatin1String("UnloadPluginArray")].toString(),
            profile[QLatin1String("PayloadIdentifier")].toString(), ribbon[QLatin1String("x")].toString()};
}

QStringList inAllPlaces(const QString &text)
{
    return {text, text, text, text};
}

} // namespace

/// Whatever character is typed into a setting, others read it in the profile, and so do we in theirs.
class tst_ProfileCharacters : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("pct.*.debug=false")); }

    void textsThatAreTyped_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("an emoji") << QStringLiteral("smile \U0001F600!");
        QTest::newRow("emoji side by side")
            << QStringLiteral("\U0001F600\U0001F600\U0001F469\u200D\U0001F4BB");
        QTest::newRow("the last character of all") << QStringLiteral("\U0010FFFD");
        QTest::newRow("an emoji's escape, typed out") << QStringLiteral("\\UD83D\\UDE00");
        QTest::newRow("a letter's escape, typed out") << QStringLiteral("a\\U0041 \\u0041 \\101");
        QTest::newRow("backslashes") << QStringLiteral("\\\\a\\n\\");
        QTest::newRow("the same beside an emoji") << QStringLiteral("\\UD83D\U0001F600\\UDE00");
        QTest::newRow("what XML escapes") << QStringLiteral("<\U0001F600>&amp;&#x1F600;\"'");
        QTest::newRow("all for private use") << allFrom(0xe000, 0xf8ff);
        QTest::newRow("private use around an emoji") << QStringLiteral("\uE0F01f600\uE0F0\U0001F600\uE0F0");
        QTest::newRow("tab, line feed and carriage return") << QStringLiteral("a\tb\nc\rd\r\ne");
        QTest::newRow("a byte order mark first") << QStringLiteral("\ufeffa\ufeff");
        QTest::newRow("every character of the first plane")
            << allFrom(0x20, 0x7e) + allFrom(0x80, 0xd7ff) + allFrom(0xe000, 0xfffd);
    }

    void textsThatAreTyped()
    {
        QFETCH(QString, text);
        const EditorXmlData data = recordWith(text);
        QVERIFY(CProfileGenerator::CreateProfile(&data, m_path, true));
        QCOMPARE(textsOf(readByPython(TestFiles::read(m_path))), inAllPlaces(text));
        QCOMPARE(textsOf(readByPython(convertedByPlistutil())), inAllPlaces(text));
    }

    void theyAreReadBackInTheWindow_data() { textsThatAreTyped_data(); }

    void theyAreReadBackInTheWindow()
    {
        QFETCH(QString, text);
        const EditorXmlData data = recordWith(text);
        QVERIFY(CProfileGenerator::CreateProfile(&data, m_path, true));
        EditorXmlData back;
        QVERIFY(CProfileGenerator::ImportProfile(m_path, &back, true));
        QCOMPARE(textsOf(back), inAllPlaces(text));
    }

    void theyAreReadInABinaryPropertyList_data() { textsThatAreTyped_data(); }

    void theyAreReadInABinaryPropertyList()
    {
        QFETCH(QString, text);
        const EditorXmlData data = recordWith(text);
        QVERIFY(CProfileGenerator::CreateProfile(&data, m_path, true));
        TestFiles::write(m_path, convertedByPlistutil());
        EditorXmlData back;
        QVERIFY(readProfile(m_path, back));
        QCOMPARE(textsOf(back), inAllPlaces(text));
    }

    void theyAreReadInWhatIsInstalled_data() { textsThatAreTyped_data(); }

    void theyAreReadInWhatIsInstalled()
    {
        QFETCH(QString, text);
        if (QFileInfo::exists(QStringLiteral("/usr/bin/profiles")))
            QSKIP("this system has the command itself");
        const QByteArray typed =
            text.toHtmlEscaped().replace(QLatin1Char('\r'), QLatin1String("&#13;")).toUtf8();
        const QByteArray settings =
            dictionary({"Preferences", array(preference("LoginDomainList", {"String", string(typed)}))});
        StandIns commands;
        commands.setOutput(QStringLiteral("profiles"),
                           listing(installedProfile(editorBundle, "e.1", "U1", settings)));
        EditorXmlData data;
        QVERIFY(CProfileGenerator::ImportProfile(&data, true));
        QCOMPARE(data.strLoginDomainList, text);
    }

    void anEmojiIsReadInAnOldStyleList()
    {
        TestFiles::write(m_path, "{ PayloadIdentifier = \"\xf0\x9f\x98\x80\\\\\"; PayloadContent = ( { "
                                 "PayloadIdentifier = \"" +
                                     editorBundle + "\"; } ); }");
        EditorXmlData data;
        QVERIFY(readProfile(m_path, data));
        QCOMPARE(data.payloadInfo.PayloadIdentifier, QStringLiteral("\U0001F600\\"));
    }

    /// No property list can hold it.
    void halfAPairIsRefused_data()
    {
        QTest::addColumn<QString>("half");
        QTest::newRow("first half") << QString(QChar(0xd83d));
        QTest::newRow("second half") << QString(QChar(0xde00));
        QTest::newRow("both, the wrong way round") << QString(QChar(0xde00)) + QChar(0xd83d);
    }

    void halfAPairIsRefused()
    {
        QFETCH(QString, half);
        const EditorXmlData data = recordWith(QStringLiteral("a") + half + QStringLiteral("b\U0001F600"));
        TestFiles::write(m_path, "from before");
        QVERIFY(!CProfileGenerator::CreateProfile(&data, m_path, true));
        QCOMPARE(TestFiles::read(m_path), QByteArray("from before"));
    }

private:
    QByteArray convertedByPlistutil() const
    {
        return TestFiles::outputOf(
            QStringLiteral("plistutil"),
            {QStringLiteral("-i"), m_path, QStringLiteral("-f"), QStringLiteral("bin")});
    }

    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("a.mobileconfig"));
};

QTEST_GUILESS_MAIN(tst_ProfileCharacters)
#include "tst_ProfileCharacters.moc"
