// SPDX-License-Identifier: Apache-2.0
#include "config/ConfigDocument.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "config/SettingItems.h"
#include "profile/ConfigGenerator.h"
#include "resources/Resources.h"
#include "tests/resources/GuidePages.h"
#include "tests/support/TestFiles.h"

#include <QDomDocument>
#include <QRegularExpression>
#include <QtTest>

namespace {

const QString wholeDocument = QStringLiteral("whole");

QList<QDomElement> childElements(const QDomElement &element)
{
    QList<QDomElement> found;
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        found.append(child);
    return found;
}

QString canonical(const QDomElement &element);

/// The entries of a dictionary have no order, its keys stand before their values.
QStringList canonicalEntries(const QDomElement &dictionary)
{
    QStringList entries;
    const QList<QDomElement> parts = childElements(dictionary);
    for (int i = 0; i + 1 < parts.size(); i += 2)
        entries.append(canonical(parts.at(i)) + canonical(parts.at(i + 1)));
    entries.sort();
    return entries;
}

QStringList canonicalChildren(const QDomElement &element)
{
    if (element.tagName() == QLatin1String("dict"))
        return canonicalEntries(element);
    QStringList parts;
    for (const QDomElement &child : childElements(element))
        parts.append(canonical(child));
    return parts.isEmpty() ? QStringList(element.text()) : parts;
}

/// One text for equal elements: without what has no meaning in documents and profiles.
QString canonical(const QDomElement &element)
{
    QStringList attributes;
    const QDomNamedNodeMap map = element.attributes();
    for (int i = 0; i < map.count(); ++i)
        attributes.append(map.item(i).nodeName() + QLatin1Char('=') + map.item(i).nodeValue());
    attributes.sort();
    return QStringLiteral("<%1 %2>%3</>")
        .arg(element.tagName(), attributes.join(QLatin1Char(' ')),
             canonicalChildren(element).join(QString()));
}

QDomDocument parsed(const QString &text)
{
    QDomDocument document;
    if (!document.setContent(text))
        qWarning("not well formed: %s", qUtf8Printable(text));
    return document;
}

bool occurs(const QDomElement &element, const QDomDocument &whole)
{
    const QString wanted = canonical(element);
    const QDomNodeList all = whole.elementsByTagName(element.tagName());
    for (int i = 0; i < all.count(); ++i) {
        if (canonical(all.at(i).toElement()) == wanted)
            return true;
    }
    return false;
}

/// A sample shows a part of a file: an element, or some of the elements that stand in one.
bool isPartOf(const QDomDocument &sample, const QDomDocument &whole)
{
    const QDomElement root = sample.documentElement();
    if (root.isNull())
        return false;
    if (occurs(root, whole))
        return true;
    const QList<QDomElement> members = childElements(root);
    return !members.isEmpty() && std::all_of(members.begin(), members.end(), [&](const QDomElement &member) {
        return occurs(member, whole);
    });
}

QDomDocument inDocument(const QString &sample)
{
    return parsed(QStringLiteral("<PelixPDFEditor><Profstore>%1</Profstore></PelixPDFEditor>").arg(sample));
}

/// What the tool writes for the settings that the samples up to one say.
struct Written
{
    EditorXmlData settings;

    void take(const QString &sample) { ConfigDocument::apply(inDocument(sample), settings); }

    QDomDocument document() const
    {
        return ConfigDocument::fromSettings(settingsForProduct(settings, Product::editor()),
                                            Product::editor(), QStringLiteral("13.1.2"));
    }

    QDomDocument profile() const
    {
        const EditorXmlData data = settingsForProduct(settings, Product::editor());
        return parsed(*ConfigGenerator::generate(&data, Product::editor()));
    }
};

bool isOfKind(const QDomElement &sample, const QString &kind)
{
    return sample.attribute(QStringLiteral("class")).split(QLatin1Char(' ')).contains(kind);
}

bool isPartOfDocument(const QDomElement &sample)
{
    return isOfKind(sample, QStringLiteral("document")) && !isOfKind(sample, wholeDocument);
}

/// The commands of a sample, each in one line.
QStringList commandsOf(const QString &sample)
{
    return QString(sample).replace(QStringLiteral("\\\n"), QStringLiteral(" ")).split(QLatin1Char('\n'));
}

QStringList matches(const QString &expression, const QString &text)
{
    QStringList found;
    auto all = QRegularExpression(expression).globalMatch(text);
    while (all.hasNext())
        found.append(all.next().captured(1));
    return found;
}

/// Of the verb that a line begins with; one that has others below it goes on with the next word.
QString helpOf(const QStringList &line)
{
    QStringList verb;
    QString help = QStringLiteral("\nVerbs:\n");
    while (help.contains(QLatin1String("\nVerbs:\n")) && verb.size() < line.size()) {
        verb += line.at(verb.size());
        help = QString::fromUtf8(TestFiles::outputOf(QStringLiteral(PCT_EXECUTABLE),
                                                     verb + QStringList(QStringLiteral("--help"))));
    }
    return help;
}

} // namespace

/// What the guide shows of documents, profiles and commands is what the tool makes and takes.
class tst_HelpSamples : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void samplesAreWhatTheToolWrites_data();
    void samplesAreWhatTheToolWrites();
    void theWholeDocumentIsTheDefaultOne();
    void everySettingOfTheDocumentHasASample();
    void everySettingWithADocumentSampleHasOneOfTheProfile();
    void everyKeyOfAProfileIsNamed();
    void commandsOfPctExist_data() { addPagesWith("commands"); }
    void commandsOfPctExist();
    void everyVerbIsNamed();

private:
    static void addPagesWith(const char *kind);
    static const GuidePage &page();
};

void tst_HelpSamples::addPagesWith(const char *kind)
{
    QTest::addColumn<QString>("name");
    for (const GuidePage &page : GuidePages::all()) {
        if (!GuidePages::samples(page, QLatin1String(kind)).isEmpty())
            QTest::newRow(qUtf8Printable(page.name)) << page.name;
    }
}

const GuidePage &tst_HelpSamples::page()
{
    QFETCH(QString, name);
    return *GuidePages::find(name);
}

void tst_HelpSamples::samplesAreWhatTheToolWrites_data()
{
    addPagesWith("document");
}

/// A profile's sample belongs to the document's before it.
void tst_HelpSamples::samplesAreWhatTheToolWrites()
{
    Written written;
    for (const QDomElement &sample : GuidePages::elements(page(), QStringLiteral("pre"))) {
        if (isPartOfDocument(sample)) {
            written.take(sample.text());
            QVERIFY2(isPartOf(parsed(sample.text()), written.document()), qUtf8Printable(sample.text()));
        }
        if (isOfKind(sample, QStringLiteral("profile")))
            QVERIFY2(isPartOf(parsed(sample.text()), written.profile()), qUtf8Printable(sample.text()));
    }
}

void tst_HelpSamples::theWholeDocumentIsTheDefaultOne()
{
    const QStringList samples =
        GuidePages::samples(*GuidePages::find(QStringLiteral("Files.html")), wholeDocument);
    QCOMPARE(samples.size(), 1);
    QCOMPARE(canonical(parsed(samples.first()).documentElement()),
             canonical(Written().document().documentElement()));
}

void tst_HelpSamples::everySettingOfTheDocumentHasASample()
{
    QSet<QString> shown;
    for (const QString &sample : GuidePages::samples(*GuidePages::find(QStringLiteral("Preferences.html")),
                                                     QStringLiteral("document"))) {
        for (const QDomElement &item : childElements(parsed(sample).documentElement())) {
            const QDomNamedNodeMap attributes = item.attributes();
            for (int i = 0; i < attributes.count(); ++i)
                shown.insert(item.attribute(QStringLiteral("Text")) + QLatin1Char('/') +
                             attributes.item(i).nodeName());
        }
    }
    for (const SettingItem &item : documentItems(Setting::Section::Preferences)) {
        for (const Setting *setting : item.settings) {
            const QString wanted = item.key + QLatin1Char('/') + setting->place.attribute;
            QVERIFY2(shown.contains(wanted), qUtf8Printable(wanted));
        }
    }
}

void tst_HelpSamples::everySettingWithADocumentSampleHasOneOfTheProfile()
{
    const QString profiles =
        GuidePages::samples(*GuidePages::find(QStringLiteral("Preferences.html")), QStringLiteral("profile"))
            .join(QString());
    for (const SettingItem &item : documentItems(Setting::Section::Preferences)) {
        QVERIFY2(profiles.contains(QStringLiteral("<string>%1</string>").arg(item.key)), item.key.data());
        for (const Setting *setting : item.settings)
            QVERIFY2(profiles.contains(QStringLiteral("<key>%1</key>").arg(setting->place.attribute)),
                     setting->place.attribute.data());
    }
}

void tst_HelpSamples::everyKeyOfAProfileIsNamed()
{
    const QString guide = GuidePages::allText();
    const QDomDocument profile = Written().profile();
    const QDomNodeList keys = profile.elementsByTagName(QStringLiteral("key"));
    QVERIFY(keys.count() > 20);
    for (int i = 0; i < keys.count(); ++i) {
        const QString key = keys.at(i).toElement().text();
        QVERIFY2(guide.contains(key), qUtf8Printable(key));
    }
}

void tst_HelpSamples::commandsOfPctExist()
{
    for (const QString &sample : GuidePages::samples(page(), QStringLiteral("commands"))) {
        for (const QString &line : commandsOf(sample)) {
            if (matches(QStringLiteral("^pct ([a-z]+)"), line).isEmpty())
                continue;
            const QString help = helpOf(line.split(QLatin1Char(' ')).mid(1));
            const QStringList known = matches(QStringLiteral("(--[a-z-]+)"), help);
            for (const QString &option : matches(QStringLiteral(" (--[a-z-]+)"), line))
                QVERIFY2(known.contains(option), qUtf8Printable(line));
        }
    }
}

void tst_HelpSamples::everyVerbIsNamed()
{
    const QString help =
        QString::fromUtf8(TestFiles::outputOf(QStringLiteral(PCT_EXECUTABLE), {QStringLiteral("--help")}));
    const QStringList verbs = matches(QStringLiteral("(?m)^  ([a-z]+)  "), help);
    QVERIFY2(verbs.size() >= 6, qUtf8Printable(help));
    const QString text = GuidePages::text(*GuidePages::find(QStringLiteral("Command line.html")));
    for (const QString &verb : verbs)
        QVERIFY2(text.contains(QStringLiteral("pct ") + verb), qUtf8Printable(verb));
}

QTEST_MAIN(tst_HelpSamples)
#include "tst_HelpSamples.moc"
