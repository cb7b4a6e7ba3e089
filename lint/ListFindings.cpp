// SPDX-License-Identifier: Apache-2.0
#include "lint/Rules.h"

#include "config/CCommon.h"
#include "config/DefaultPlugins.h"
#include "config/LoginDomain.h"
#include "config/Product.h"
#include "config/SettingText.h"
#include "core/NearestWord.h"
#include "lint/LookAlike.h"

#include <QSet>

#include <algorithm>

// What is wrong with lists: plug-ins, domains and file types.

namespace {

using namespace Lint;
using Entries = Setting::Entries;

/// The first entries of a list, which can be as long as a file.
QStringList entriesOf(const Said &said)
{
    const QChar mark = said.setting->entries == Entries::FileTypes ? QLatin1Char('|') : QLatin1Char(';');
    QStringList entries;
    decltype(said.text.size()) start = 0;
    while (start <= said.text.size() && entries.size() < mostLookedAt) {
        const auto found = said.text.indexOf(mark, start);
        const auto end = found < 0 ? said.text.size() : found;
        if (end > start)
            entries += said.text.mid(start, end - start);
        start = end + 1;
    }
    return entries;
}

/// Calls the function with each entry of each list of this kind.
template <typename Take> void forEachEntry(const Subject &subject, Entries entries, Take take)
{
    for (const Said &said : subject.said) {
        if (said.setting->entries != entries)
            continue;
        for (const QString &entry : entriesOf(said))
            take(said, entry);
    }
}

QStringList librariesOf(const Product &product)
{
    QStringList libraries;
    const auto plugins = CCommon::EditorXmlReadPluginsTemplate(product);
    for (const _EditorXmlPuginData_ &plugin : plugins)
        libraries += plugin.path;
    return libraries;
}

QStringList titlesOf(const Product &product)
{
    QStringList titles;
    const auto plugins = CCommon::EditorXmlReadPluginsTemplate(product);
    for (const _EditorXmlPuginData_ &plugin : plugins)
        titles += plugin.name;
    return titles;
}

bool isPlainDomain(const QString &text)
{
    return plainForm(text) != text && isLoginDomain(plainForm(text));
}

bool isPlainFileTypes(const QString &text)
{
    return plainForm(text) != text && bool(SettingText::checkFileTypes(plainForm(text)));
}

TextPlace placeOfList(const Subject &subject, Entries entries)
{
    const auto found = std::find_if(settings().begin(), settings().end(),
                                    [&](const Setting &setting) { return setting.entries == entries; });
    return placeOf(subject, *found);
}

} // namespace

Remarks Lint::lookAlikeEntries(const Subject &subject)
{
    Remarks remarks;
    const QStringList libraries = librariesOf(Product::editor()) + librariesOf(Product::reader());
    forEachEntry(subject, Entries::Plugins, [&](const Said &said, const QString &entry) {
        const QString plain = lookAlike(entry, libraries);
        if (!plain.isEmpty())
            remarks.append(lookAlikeRemark(said.place, QStringLiteral("the plug-in"), entry, plain));
    });
    forEachEntry(subject, Entries::Domains, [&](const Said &said, const QString &entry) {
        if (isPlainDomain(entry))
            remarks.append(
                lookAlikeRemark(said.place, QStringLiteral("the domain"), entry, plainForm(entry)));
    });
    for (const Said &said : subject.said) {
        if (said.setting->entries == Entries::FileTypes && isPlainFileTypes(said.text))
            remarks.append(lookAlikeRemark(said.place, QStringLiteral("the list of file types"), said.text,
                                           plainForm(said.text)));
    }
    return remarks;
}

Remarks Lint::wrongDomains(const Subject &subject)
{
    Remarks remarks;
    forEachEntry(subject, Entries::Domains, [&](const Said &said, const QString &entry) {
        if (!isLoginDomain(entry) && !isPlainDomain(entry))
            remarks.append(
                {said.place,
                 QStringLiteral("%1 is no login domain; write one such as @example.com").arg(quoted(entry))});
    });
    return remarks;
}

Remarks Lint::wrongFileTypes(const Subject &subject)
{
    Remarks remarks;
    for (const Said &said : subject.said) {
        if (said.setting->entries != Entries::FileTypes || isPlainFileTypes(said.text))
            continue;
        const Result<> checked = SettingText::checkFileTypes(said.text);
        if (!checked)
            remarks.append({said.place, checked.problem().text});
    }
    return remarks;
}

Remarks Lint::unknownPlugins(const Subject &subject)
{
    Remarks remarks;
    const QStringList all = librariesOf(Product::editor()) + librariesOf(Product::reader());
    const QStringList own = librariesOf(*subject.product) + titlesOf(*subject.product);
    forEachEntry(subject, Entries::Plugins, [&](const Said &said, const QString &entry) {
        if (!all.contains(entry) && lookAlike(entry, all).isEmpty())
            remarks.append({said.place, QStringLiteral("there is no plug-in %1%2; \"pct config names\" lists "
                                                       "their libraries")
                                            .arg(quoted(entry), nearestHint(entry, own))});
    });
    return remarks;
}

Remarks Lint::pluginsOfOtherProduct(const Subject &subject)
{
    Remarks remarks;
    const QStringList own = librariesOf(*subject.product);
    const QStringList others = librariesOf(subject.product->other());
    forEachEntry(subject, Entries::Plugins, [&](const Said &said, const QString &entry) {
        if (!own.contains(entry) && others.contains(entry))
            remarks.append({said.place, QStringLiteral("the %1 has no plug-in %2, only the %3 has; remove it")
                                            .arg(QString(subject.product->title), quoted(entry),
                                                 QString(subject.product->other().title))});
    });
    return remarks;
}

Remarks Lint::ignoredDomains(const Subject &subject)
{
    const QString &list = subject.settings.strLoginDomainList;
    const bool areListed =
        std::any_of(list.begin(), list.end(), [](QChar c) { return c != QLatin1Char(';'); });
    if (!subject.product->isEditor() || !areListed || subject.settings.strLoginDomain == QLatin1String("1"))
        return {};
    return {
        {placeOfList(subject, Entries::Domains),
         QStringLiteral("domains are listed, but the mode is not 1 (whitelist), so accounts of every domain "
                        "may sign in; choose the mode 1 or empty the list")}};
}

Remarks Lint::whitelistWithoutDomain(const Subject &subject)
{
    const EditorXmlData &data = subject.settings;
    bool isAnyThere = false;
    forEachEntry(subject, Entries::Domains, [&](const Said &, const QString &entry) {
        isAnyThere = isAnyThere || isLoginDomain(entry);
    });
    const bool isWhitelist = data.strLoginDomain == QLatin1String("1");
    if (!subject.product->isEditor() || !isWhitelist || data.strLoginDomainList.isEmpty() || isAnyThere)
        return {};
    return {
        {placeOfList(subject, Entries::Domains),
         QStringLiteral("the whitelist is on, but %1 names no domain; add one, choose the mode 2 or empty "
                        "the list")
             .arg(quoted(data.strLoginDomainList))}};
}

Remarks Lint::repeatedEntries(const Subject &subject)
{
    Remarks remarks;
    for (const Entries entries : {Entries::Plugins, Entries::Domains, Entries::FileTypes}) {
        QSet<QString> known;
        forEachEntry(subject, entries, [&](const Said &said, const QString &entry) {
            const QString name =
                entries == Entries::FileTypes ? entry.section(QLatin1Char(':'), 0, 0) : entry;
            if (known.contains(name))
                remarks.append(
                    {said.place, QStringLiteral("%1 is in the list already; remove it").arg(quoted(entry))});
            known.insert(name);
        });
    }
    return remarks;
}
