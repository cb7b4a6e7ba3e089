// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/ProductInfo.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/XmlReader.h"
#include "hosttools/flatpkg/StringsFile.h"

#include <algorithm>
#include <QHash>
#include <QStringList>

namespace FlatPkg {

namespace {

constexpr qint64 largestText = 32 * 1024 * 1024;

/// The title as it is written in a Distribution, and the tables in it that may resolve it.
struct Distribution
{
    QString title;
    QStringList languages;
    QHash<QString, QString> tables; ///< by language
};

/// Reads the texts of a package. Together they have a limit: members can share their bytes, so that a small
/// package can hold any number of large texts.
class Texts
{
public:
    explicit Texts(const XarReader &package)
        : m_package(package)
    {
    }

    QByteArray read(const TocEntry &entry)
    {
        m_room -= entry.data ? entry.data->size : 0;
        if (m_room < 0)
            throw Error("its texts are too large together");
        return m_package.contents(entry, largestText);
    }

private:
    const XarReader &m_package;
    qint64 m_room = largestText;
};

void readLocalization(XmlReader &xml, Distribution &distribution)
{
    while (xml.readNextStartElement()) {
        const QString language = QString::fromUtf8(xml.attribute("language"));
        distribution.languages.append(language);
        distribution.tables.insert(language, QString::fromUtf8(xml.readAllText()));
    }
}

Distribution parseDistribution(const QByteArray &document)
{
    XmlReader xml(document);
    Distribution distribution;
    xml.readNextStartElement();
    while (xml.readNextStartElement()) {
        if (xml.at("title") && distribution.title.isEmpty())
            distribution.title = QString::fromUtf8(xml.readAllText()).trimmed();
        else if (xml.at("localization"))
            readLocalization(xml, distribution);
        else
            xml.skipCurrentElement();
    }
    xml.readToEnd();
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

const TocEntry *childNamed(const TocEntry &folder, const char *name)
{
    const auto found = std::find_if(folder.children.begin(), folder.children.end(),
                                    [&](const TocEntry &entry) { return entry.name == name; });
    return found == folder.children.end() ? nullptr : &*found;
}

/// A language and the file with its texts.
struct LanguageFolder
{
    QString language;
    const TocEntry *strings;
};

std::vector<LanguageFolder> languageFolders(const XarReader &package)
{
    std::vector<LanguageFolder> folders;
    const QString ending = QStringLiteral(".lproj");
    const TocEntry *resources = package.find(QByteArrayLiteral("Resources"));
    if (!resources)
        return folders;
    for (const TocEntry &entry : resources->children) {
        const QString name = QString::fromUtf8(entry.name);
        const TocEntry *strings = name.endsWith(ending) ? childNamed(entry, "Localizable.strings") : nullptr;
        if (strings)
            folders.push_back({name.chopped(ending.size()), strings});
    }
    return folders;
}

/// The English text for a title that is a key, otherwise the title itself.
class TitleResolver
{
public:
    TitleResolver(const XarReader &package, const Distribution &distribution, Texts &texts)
        : m_distribution(distribution)
        , m_texts(texts)
    {
        for (const LanguageFolder &folder : languageFolders(package)) {
            m_languages.append(folder.language);
            m_files.insert(folder.language, folder.strings);
        }
    }

    QString resolved();

private:
    std::optional<QString> inLanguage(const QString &language);

    const Distribution &m_distribution;
    Texts &m_texts;
    QStringList m_languages;
    QHash<QString, const TocEntry *> m_files;
};

QString TitleResolver::resolved()
{
    QStringList languages = englishFirst(m_languages + m_distribution.languages);
    languages.removeDuplicates();
    for (const QString &language : languages)
        if (const std::optional<QString> title = inLanguage(language))
            return *title;
    return m_distribution.title;
}

std::optional<QString> TitleResolver::inLanguage(const QString &language)
{
    if (const TocEntry *file = m_files.value(language))
        if (auto title = textIn(decodeStrings(m_texts.read(*file)), m_distribution.title))
            return title;
    return textIn(m_distribution.tables.value(language), m_distribution.title);
}

QVector<QByteArray> componentFolders(const XarReader &package)
{
    QVector<QByteArray> names;
    for (const TocEntry &entry : package.toc().entries)
        if (childNamed(entry, "PackageInfo"))
            names.append(entry.name);
    return names;
}

QByteArray identifierIn(const QByteArray &packageInfo)
{
    XmlReader xml(packageInfo);
    xml.readNextStartElement();
    const QByteArray identifier = xml.attribute("identifier");
    if (!xml.at("pkg-info") || identifier.isEmpty())
        throw Error("does not name a package");
    return identifier;
}

} // namespace

ProductInfo readProductInfo(const XarReader &package)
{
    Texts texts(package);
    if (const TocEntry *entry = package.find(QByteArrayLiteral("Distribution")))
        return within("Distribution", [&]() -> ProductInfo {
            const Distribution distribution = parseDistribution(texts.read(*entry));
            const QString title = TitleResolver(package, distribution, texts).resolved();
            return {title.toUtf8(), componentFolders(package)};
        });
    if (const TocEntry *entry = package.find(QByteArrayLiteral("PackageInfo")))
        return within("PackageInfo", [&]() -> ProductInfo {
            return {QByteArray(), {identifierIn(texts.read(*entry))}};
        });
    throw Error("not an installer package: it has neither a Distribution nor a PackageInfo");
}

} // namespace FlatPkg
