// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/ProductInfo.h"

#include "hosttools/flatpkg/Error.h"
#include "hosttools/flatpkg/StringsFile.h"

#include <algorithm>
#include <QStringList>
#include <QXmlStreamReader>

namespace FlatPkg {

namespace {

constexpr qint64 largestDocument = 32 * 1024 * 1024;

/// The title as it is written in a Distribution, and what it has to resolve it.
struct Distribution
{
    QString title;
    QStringList languages;
    QHash<QString, Strings> stringsByLanguage;
};

QByteArray readDocument(const XarReader &package, const TocEntry &entry)
{
    const QByteArray bytes = package.contents(entry, largestDocument);
    if (bytes.contains("<!ENTITY"))
        throw Error("has entity definitions, which no package needs");
    return bytes;
}

void requireParsed(const QXmlStreamReader &xml)
{
    if (xml.hasError())
        throw Error("is not well-formed: " + xml.errorString().toUtf8());
}

void readLocalization(QXmlStreamReader &xml, Distribution &distribution)
{
    while (xml.readNextStartElement()) {
        const QString language = xml.attributes().value(QLatin1String("language")).toString();
        const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements);
        distribution.languages.append(language);
        distribution.stringsByLanguage.insert(language, parseStrings(text));
    }
}

Distribution parseDistribution(const QByteArray &document)
{
    QXmlStreamReader xml(document);
    Distribution distribution;
    xml.readNextStartElement();
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("title") && distribution.title.isEmpty())
            distribution.title = xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed();
        else if (xml.name() == QLatin1String("localization"))
            readLocalization(xml, distribution);
        else
            xml.skipCurrentElement();
    }
    requireParsed(xml);
    return distribution;
}

bool isEnglish(const QString &language)
{
    return language == QLatin1String("English") || language == QLatin1String("en") ||
           language.startsWith(QLatin1String("en-")) || language.startsWith(QLatin1String("en_"));
}

/// English first, otherwise the languages as they come.
QStringList englishFirst(QStringList languages)
{
    std::stable_partition(languages.begin(), languages.end(), isEnglish);
    return languages;
}

QStringList languageFolders(const XarReader &package)
{
    QStringList languages;
    const QString ending = QStringLiteral(".lproj");
    const TocEntry *resources = package.find(QByteArrayLiteral("Resources"));
    if (!resources)
        return languages;
    for (const TocEntry &entry : resources->children) {
        const QString name = QString::fromUtf8(entry.name);
        if (name.endsWith(ending))
            languages.append(name.chopped(ending.size()));
    }
    return languages;
}

Strings stringsOfFolder(const XarReader &package, const QString &language)
{
    const QString path = QStringLiteral("Resources/%1.lproj/Localizable.strings").arg(language);
    const TocEntry *entry = package.find(path.toUtf8());
    return entry ? parseStrings(decodeStrings(package.contents(*entry, largestDocument))) : Strings();
}

/// The English text for a title that is a key, otherwise the title itself.
QString resolvedTitle(const XarReader &package, const Distribution &distribution)
{
    const QString &title = distribution.title;
    for (const QString &language : englishFirst(languageFolders(package) + distribution.languages)) {
        const Strings inFolder = stringsOfFolder(package, language);
        if (inFolder.contains(title))
            return inFolder.value(title);
        const Strings inDocument = distribution.stringsByLanguage.value(language);
        if (inDocument.contains(title))
            return inDocument.value(title);
    }
    return title;
}

QVector<QByteArray> componentFolders(const XarReader &package)
{
    QVector<QByteArray> names;
    for (const TocEntry &entry : package.toc().entries)
        if (package.find(entry.name + "/PackageInfo"))
            names.append(entry.name);
    return names;
}

QByteArray identifierIn(const QByteArray &packageInfo)
{
    QXmlStreamReader xml(packageInfo);
    xml.readNextStartElement();
    requireParsed(xml);
    const QByteArray identifier = xml.attributes().value(QLatin1String("identifier")).toUtf8();
    if (xml.name() != QLatin1String("pkg-info") || identifier.isEmpty())
        throw Error("does not name a package");
    return identifier;
}

} // namespace

ProductInfo readProductInfo(const XarReader &package)
{
    if (const TocEntry *entry = package.find(QByteArrayLiteral("Distribution")))
        return within("Distribution", [&]() -> ProductInfo {
            const Distribution distribution = parseDistribution(readDocument(package, *entry));
            return {resolvedTitle(package, distribution).toUtf8(), componentFolders(package)};
        });
    if (const TocEntry *entry = package.find(QByteArrayLiteral("PackageInfo")))
        return within("PackageInfo", [&]() -> ProductInfo {
            return {QByteArray(), {identifierIn(readDocument(package, *entry))}};
        });
    throw Error("not an installer package: it has neither a Distribution nor a PackageInfo");
}

} // namespace FlatPkg
