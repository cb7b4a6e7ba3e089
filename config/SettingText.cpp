// SPDX-License-Identifier: Apache-2.0
#include "config/SettingText.h"

#include "config/CCommon.h"
#include "config/DefaultPlugins.h"
#include "config/KeptElement.h"
#include "config/LoginDomain.h"
#include "config/Product.h"
#include "config/SettingItems.h"
#include "config/XmlText.h"
#include "config/XmlTree.h"
#include "core/NearestWord.h"
#include "core/PrintableText.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

using Entries = Setting::Entries;
using SettingText::Choice;
using Data = EditorXmlData;

const QString listVersion = QStringLiteral("version:1");

QString quoted(const QString &text)
{
    return QLatin1Char('"') + printableStart(text, 64) + QLatin1Char('"');
}

Problem refused(const QString &text)
{
    return {{}, text};
}

bool isSame(const QString &first, const QString &second)
{
    return first.compare(second, Qt::CaseInsensitive) == 0;
}

QList<Choice> yesAndNo()
{
    return {{QStringLiteral("0"), QStringLiteral("false")}, {QStringLiteral("1"), QStringLiteral("true")}};
}

QList<Choice> pluginChoices(const Product &product)
{
    QList<Choice> choices;
    const auto plugins = CCommon::EditorXmlReadPluginsTemplate(product);
    for (const _EditorXmlPuginData_ &plugin : plugins)
        choices.append({plugin.path, plugin.name});
    return choices;
}

QStringList wordsOf(const QList<Choice> &choices)
{
    QStringList words;
    for (const Choice &choice : choices)
        words += choice.word;
    return words;
}

/// The choice that a text names by its word or value; null where none is.
const Choice *chosen(const QList<Choice> &choices, const QString &text)
{
    const auto found = std::find_if(choices.begin(), choices.end(), [&](const Choice &choice) {
        return isSame(choice.word, text) || isSame(choice.value, text);
    });
    return found == choices.end() ? nullptr : &*found;
}

QString wordFor(const QList<Choice> &choices, const QString &value)
{
    const Choice *choice = chosen(choices, value);
    return choice ? choice->word : value;
}

/// Entries may be written with any of the marks.
QStringList split(const QString &text, const QString &marks)
{
    static const QRegularExpression blanks(QStringLiteral("^\\s+|\\s+$"));
    QStringList entries;
    for (QString entry : text.split(QRegularExpression(marks), Qt::SkipEmptyParts)) {
        entry.remove(blanks);
        if (!entry.isEmpty())
            entries += entry;
    }
    entries.removeDuplicates();
    return entries;
}

Result<QString> pluginList(const QString &text, const Product &product)
{
    const QList<Choice> plugins = pluginChoices(product);
    QString libraries;
    for (const QString &entry : split(text, QStringLiteral("[;,]"))) {
        const Choice *plugin = chosen(plugins, entry);
        if (!plugin)
            return refused(QStringLiteral("the product has no plug-in %1%2; \"pct config names\" lists them")
                               .arg(quoted(entry), nearestHint(entry, wordsOf(plugins))));
        libraries += plugin->value + QLatin1Char(';');
    }
    return libraries;
}

Result<QString> domainList(const QString &text)
{
    const QStringList domains = split(text, QStringLiteral("[;,]"));
    for (const QString &domain : domains) {
        if (!isLoginDomain(domain))
            return refused(
                QStringLiteral("%1 is no login domain; write one such as @example.com").arg(quoted(domain)));
    }
    return domains.join(QLatin1Char(';'));
}

Result<QString> fileTypeList(const QString &text)
{
    QStringList types = split(text, QStringLiteral("[|;,]"));
    types.removeAll(listVersion);
    const QString list =
        types.isEmpty() ? QString() : listVersion + QLatin1Char('|') + types.join(QLatin1Char('|'));
    const Result<> sound = SettingText::checkFileTypes(list);
    return sound ? Result<QString>(list) : sound.problem();
}

Result<QString> listText(const Setting &setting, const QString &text, const Product &product)
{
    switch (setting.entries) {
    case Entries::Plugins:
        return pluginList(text, product);
    case Entries::Domains:
        return domainList(text);
    case Entries::FileTypes:
        return fileTypeList(text);
    case Entries::One:
        break;
    }
    return text;
}

/// The value that a text names where only some values are taken.
Result<QString> chosenValue(const Setting &setting, const QString &text, const Product &product)
{
    const QList<Choice> choices = SettingText::choicesOf(setting, product);
    if (const Choice *choice = chosen(choices, text))
        return choice->value;
    for (const Setting::Choice &choice : setting.choices) {
        if (!choice.brief.isEmpty() && isSame(choice.brief, text))
            return QString(choice.value);
    }
    QStringList words;
    for (const Choice &choice : choices)
        words += choice.value == choice.word ? choice.word
                                             : QStringLiteral("%1 (%2)").arg(choice.word, choice.value);
    return refused(QStringLiteral("%1 takes %2, not %3")
                       .arg(setting.name, words.join(QStringLiteral(", ")), quoted(text)));
}

Result<QDomElement> elementFrom(const Setting &setting, const QString &text)
{
    const QString tag = elementName(setting.place.section);
    if (text.isEmpty())
        return QDomElement();
    const Result<QDomDocument> document = XmlTree::read(text.toUtf8());
    if (!document)
        return refused(QStringLiteral("%1 is no XML (%2)").arg(setting.name, document.problem().text));
    if (document->documentElement().tagName() != tag)
        return refused(QStringLiteral("%1 is an element \"%2\"").arg(setting.name, tag));
    return keptElement(document->documentElement());
}

Result<> assign(const Setting &setting, bool Data::*member, const QString &text, const Product &product,
                Data &data)
{
    const Result<QString> value = chosenValue(setting, text, product);
    if (!value)
        return value.problem();
    data.*member = *value == QLatin1String("1");
    return {};
}

Result<> assign(const Setting &setting, int Data::*member, const QString &text, const Product &product,
                Data &data)
{
    const Result<QString> value = chosenValue(setting, text, product);
    if (!value)
        return value.problem();
    data.*member = value->toInt();
    return {};
}

Result<> assign(const Setting &setting, QString Data::*member, const QString &text, const Product &product,
                Data &data)
{
    if (!isXmlText(text))
        return refused(QStringLiteral("%1 cannot hold control characters").arg(setting.name));
    const Result<QString> value =
        setting.choices.empty() ? listText(setting, text, product) : chosenValue(setting, text, product);
    if (!value)
        return value.problem();
    data.*member = *value;
    return {};
}

Result<> assign(const Setting &setting, QDomElement Data::*member, const QString &text, const Product &,
                Data &data)
{
    const Result<QDomElement> element = elementFrom(setting, text);
    if (!element)
        return element.problem();
    data.*member = *element;
    return {};
}

QString plainText(const QList<Choice> &choices, bool value)
{
    return wordFor(choices, value ? QStringLiteral("1") : QStringLiteral("0"));
}

QString plainText(const QList<Choice> &choices, int value)
{
    return wordFor(choices, QString::number(value));
}

QString plainText(const QList<Choice> &choices, const QString &value)
{
    return choices.isEmpty() ? value : wordFor(choices, value);
}

QString plainText(const QList<Choice> &, const QDomElement &value)
{
    return elementText(value);
}

void follow(const Setting &setting, Data &data)
{
    if (setting.follow)
        setting.follow(data);
}

} // namespace

Result<const Setting *> SettingText::named(const QString &name)
{
    QStringList known;
    for (const Setting &setting : settings()) {
        if (setting.name == name)
            return &setting;
        known += setting.name;
    }
    return refused(QStringLiteral("there is no setting %1%2").arg(quoted(name), nearestHint(name, known)));
}

QLatin1String SettingText::typeName(const Setting &setting)
{
    if (setting.entries != Entries::One)
        return QLatin1String("list");
    if (std::holds_alternative<bool Data::*>(setting.member))
        return QLatin1String("boolean");
    if (std::holds_alternative<int Data::*>(setting.member))
        return QLatin1String("integer");
    return std::holds_alternative<QString Data::*>(setting.member) ? QLatin1String("text")
                                                                   : QLatin1String("element");
}

QList<Choice> SettingText::choicesOf(const Setting &setting, const Product &product)
{
    if (setting.entries == Entries::Plugins)
        return pluginChoices(product);
    if (std::holds_alternative<bool Data::*>(setting.member))
        return yesAndNo();
    QList<Choice> choices;
    for (const Setting::Choice &choice : setting.choices)
        choices.append({choice.value, choice.word});
    return choices;
}

QString SettingText::writtenText(const Setting &setting, Form form, EditorXmlData data)
{
    for (const Setting &other : settings()) {
        if (other.settle)
            other.settle(data, Product::editor());
    }
    if (form == Form::Document)
        return setting.document.text(data).value_or(QString());
    const auto value = setting.profile.value(data);
    const int *number = std::get_if<int>(&value);
    return number ? QString::number(*number) : std::get<QString>(value);
}

QList<Choice> SettingText::writtenChoicesOf(const Setting &setting, Form form)
{
    if (setting.entries != Entries::One)
        return {};
    QList<Choice> choices = choicesOf(setting, Product::editor());
    for (Choice &choice : choices) {
        EditorXmlData data;
        static_cast<void>(take(setting, choice.value, Product::editor(), data));
        choice.value = writtenText(setting, form, data);
    }
    return choices;
}

QString SettingText::valueOf(const Setting &setting, const EditorXmlData &data, const Product &product)
{
    const QList<Choice> choices =
        setting.entries == Entries::One ? choicesOf(setting, product) : QList<Choice>();
    const QString text =
        std::visit([&](auto member) { return plainText(choices, data.*member); }, setting.member);
    if (setting.entries != Entries::Plugins)
        return text;
    QStringList titles;
    for (const QString &library : entriesOf(setting.entries, text))
        titles += wordFor(pluginChoices(product), library);
    return titles.join(QLatin1Char(';'));
}

Result<> SettingText::take(const Setting &setting, const QString &text, const Product &product,
                           EditorXmlData &data)
{
    if (setting.isOnlyForEditor && !product.isEditor())
        return refused(QStringLiteral("only the Editor has %1; leave it out").arg(setting.name));
    if (text == valueOf(setting, EditorXmlData(), product)) {
        takeDefault(setting, data);
        return {};
    }
    const Result<> taken =
        std::visit([&](auto member) { return assign(setting, member, text, product, data); }, setting.member);
    if (taken)
        follow(setting, data);
    return taken;
}

void SettingText::takeDefault(const Setting &setting, EditorXmlData &data)
{
    reset(setting, data);
    follow(setting, data);
}

QStringList SettingText::entriesOf(Entries entries, const QString &text)
{
    const QChar mark = entries == Entries::FileTypes ? QLatin1Char('|') : QLatin1Char(';');
    return text.split(mark, Qt::SkipEmptyParts);
}

Result<> SettingText::checkFileTypes(const QString &list)
{
    static const QRegularExpression type(QStringLiteral("\\A\\.[^\\s.:|][^\\s:|]*:[0-3]\\z"));
    QStringList types = entriesOf(Entries::FileTypes, list);
    if (list.isEmpty())
        return {};
    if (types.isEmpty() || types.takeFirst() != listVersion)
        return refused(QStringLiteral("a list of file types begins with \"%1\"").arg(listVersion));
    for (const QString &entry : types) {
        if (!type.match(entry).hasMatch())
            return refused(
                QStringLiteral("%1 is no file type with a level from 0 to 3; write one such as .zip:1")
                    .arg(quoted(entry)));
    }
    return {};
}
