// SPDX-License-Identifier: Apache-2.0
#include "lint/Rules.h"

#include "core/PrintableText.h"
#include "lint/LookAlike.h"

#include <algorithm>

namespace {

using namespace Lint;

/// Whoever reads more has long begun to mend.
constexpr int enough = 1000;

template <Remarks (*...parts)(const Subject &)> Remarks all(const Subject &subject)
{
    return (parts(subject) + ...);
}

Rule error(const char *code, const char *summary, const char *advice, Remarks (*find)(const Subject &))
{
    return {QLatin1String(code), Severity::Error, QLatin1String(summary), QLatin1String(advice), find};
}

Rule warning(const char *code, const char *summary, const char *advice, Remarks (*find)(const Subject &))
{
    return {QLatin1String(code), Severity::Warning, QLatin1String(summary), QLatin1String(advice), find};
}

Rule note(const char *code, const char *summary, const char *advice, Remarks (*find)(const Subject &))
{
    return {QLatin1String(code), Severity::Note, QLatin1String(summary), QLatin1String(advice), find};
}

std::vector<Rule> allRules()
{
    return {
        error("unreadable", "a file that no part of the tool would take",
              "mend what the message names; nothing else of the file was looked at", nullptr),
        error("wrong-value", "a value that the setting does not have, so that another one counts",
              "write one of the values that the message names", all<wrongValues, wrongHidden>),
        error("look-alike",
              "a text that only looks like another: letters of another script, characters that are not seen, "
              "white space at an end",
              "type the text anew", all<lookAlikes, lookAlikeEntries, lookAlikeCommands>),
        error("wrong-domain", "an entry of the domain list that the page would refuse",
              "write it as in an account's name, such as @example.com", wrongDomains),
        error(
            "wrong-file-types", "a list of file types that is not in their form",
            "write version:1 and for each type a |, the extension with its dot, a : and a level from 0 to 3",
            wrongFileTypes),
        warning("unknown-plugin", "a plug-in that neither product has",
                "write the name of the library; \"pct config names\" lists them", unknownPlugins),
        warning("plugin-of-other-product", "a plug-in that only the other product has",
                "remove it, or make the list anew for this product", pluginsOfOtherProduct),
        warning("unknown-command",
                "something hidden from the ribbon or the quick-access bar that the product does not have",
                "write the name that \"pct config commands\" lists, at the place where it stands there",
                unknownCommands),
        warning("not-read", "a key, an attribute or an element that nothing reads",
                "correct its name or remove it", all<unread, unreadInRibbon>),
        warning("ignored-setting", "a setting, other than its default, that has no effect in the product",
                "remove it, or use the file for the product that has the setting", ignoredSettings),
        warning("ignored-domains", "a domain list in the mode that lets accounts of every domain sign in",
                "choose the mode 1 (whitelist) or empty the list", ignoredDomains),
        warning("whitelist-without-domain", "a whitelist whose list is there but names no domain",
                "add a domain, choose the mode 2 or empty the list", whitelistWithoutDomain),
        warning("hidden-ribbon", "a ribbon of which everything is hidden",
                "show at least one category; people have no commands otherwise", hiddenRibbon),
        warning("repeated-item", "a setting that is said again further below, where it counts",
                "remove one of the two", repeatedItems),
        warning("shared-identifier", "profiles with one identifier: a system keeps only the last one",
                "give each its own --identifier, unless no computer gets both", nullptr),
        note("repeated-entry", "an entry that stands in a list already; only the first one counts",
             "remove it", repeatedEntries),
        note("more-findings", "more findings in a file than are told", "mend what is told first", nullptr),
    };
}

const Rule &ruleOf(const char *code)
{
    return *std::find_if(rules().begin(), rules().end(),
                         [code](const Rule &rule) { return rule.code == QLatin1String(code); });
}

bool isBefore(const Finding &first, const Finding &second)
{
    const TextPlace &one = first.remark.place;
    const TextPlace &other = second.remark.place;
    return std::make_pair(one.line, one.column) < std::make_pair(other.line, other.column);
}

} // namespace

QString Lint::quoted(const QString &text)
{
    return QLatin1Char('"') + printableStart(text, 64) + QLatin1Char('"');
}

Remark Lint::lookAlikeRemark(const TextPlace &place, const QString &what, const QString &text,
                             const QString &plain)
{
    return {place, QStringLiteral("%1 %2 only looks like %3 (%4); type it anew")
                       .arg(what, quoted(text), quoted(plain), oddityOf(text))};
}

QLatin1String Lint::wordOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return QLatin1String("error");
    case Severity::Warning:
        return QLatin1String("warning");
    case Severity::Note:
        break;
    }
    return QLatin1String("note");
}

const std::vector<Lint::Rule> &Lint::rules()
{
    static const std::vector<Rule> table = allRules();
    return table;
}

const Lint::Rule &Lint::unreadableFile()
{
    return ruleOf("unreadable");
}

const Lint::Rule &Lint::sharedIdentifier()
{
    return ruleOf("shared-identifier");
}

QVector<Lint::Finding> Lint::findingsIn(const Subject &subject)
{
    QVector<Finding> findings;
    for (const Rule &rule : rules()) {
        const Remarks remarks = rule.find ? rule.find(subject) : Remarks();
        for (const Remark &remark : remarks)
            findings.append({&rule, remark});
    }
    std::stable_sort(findings.begin(), findings.end(), isBefore);
    if (findings.size() <= enough && !subject.isCut)
        return findings;
    findings = findings.mid(0, enough);
    findings.append({&ruleOf("more-findings"),
                     {{}, QStringLiteral("there is more to find in this file; mend what is told first")}});
    return findings;
}
