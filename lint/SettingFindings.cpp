// SPDX-License-Identifier: Apache-2.0
#include "lint/Rules.h"

#include "config/Product.h"
#include "config/ProductSettings.h"
#include "config/SettingItems.h"
#include "config/SettingText.h"
#include "core/NearestWord.h"
#include "core/PrintableText.h"
#include "lint/LookAlike.h"

#include <QHash>

#include <algorithm>

namespace {

using namespace Lint;
using Entries = Setting::Entries;
using Section = Setting::Section;
using SettingText::Choice;

/// What the file calls the place of a setting.
QString nameIn(Form form, const Setting &setting)
{
    if (form == Form::Json)
        return setting.name;
    return QStringLiteral("\"%1\" of \"%2\"").arg(setting.place.attribute, setting.place.key);
}

SettingText::Form writtenForm(Form form)
{
    return form == Form::Profile ? SettingText::Form::Profile : SettingText::Form::Document;
}

QList<Choice> choicesIn(Form form, const Setting &setting)
{
    if (setting.entries != Entries::One)
        return {};
    return form == Form::Json ? SettingText::choicesOf(setting, Product::editor())
                              : SettingText::writtenChoicesOf(setting, writtenForm(form));
}

bool isInDocuments(const Setting &setting)
{
    return setting.document.text != nullptr;
}

/// The default is one even where no choice has its form.
QStringList defaultTexts(Form form, const Setting &setting)
{
    const EditorXmlData standard;
    if (form != Form::Json)
        return {SettingText::writtenText(setting, writtenForm(form), standard)};
    QStringList texts;
    if (const auto *number = std::get_if<int EditorXmlData::*>(&setting.member))
        texts += QString::number(standard.**number);
    if (isInDocuments(setting) && std::holds_alternative<QString EditorXmlData::*>(setting.member))
        texts += SettingText::writtenText(setting, SettingText::Form::Document, standard);
    return texts;
}

QStringList collectedTexts(Form form, const Setting &setting)
{
    const QList<Choice> choices = choicesIn(form, setting);
    QStringList texts = choices.isEmpty() ? QStringList() : defaultTexts(form, setting);
    const bool takesWords = std::holds_alternative<QString EditorXmlData::*>(setting.member);
    for (const Choice &choice : choices) {
        texts += choice.value;
        if (takesWords)
            texts += choice.word;
    }
    return texts;
}

/// All that the setting may be said to be; empty where anything may.
const QStringList &textsOf(Form form, const Setting &setting)
{
    static QHash<QPair<int, const Setting *>, QStringList> known;
    const QPair<int, const Setting *> key(static_cast<int>(form), &setting);
    const auto found = known.constFind(key);
    return found != known.constEnd() ? *found : *known.insert(key, collectedTexts(form, setting));
}

QString advised(const QList<Choice> &choices)
{
    QStringList words;
    for (const Choice &choice : choices)
        words += QStringLiteral("%1 (%2)").arg(
            choice.value.isEmpty() ? QStringLiteral("nothing") : choice.value, choice.word);
    return words.join(QStringLiteral(", "));
}

/// Whether a missing value is read as the default, so that nothing is lost.
bool isHarmlessWhenMissing(const Said &said, Form form)
{
    EditorXmlData data;
    if (form == Form::Profile)
        said.setting->profile.read(data, {});
    else
        said.setting->document.read(data, QString());
    return sameValue(*said.setting, data, EditorXmlData());
}

Remarks wrongValue(const Said &said, Form form)
{
    const QStringList &texts = textsOf(form, *said.setting);
    if (texts.isEmpty() || !lookAlike(said.text, texts).isEmpty())
        return {};
    // What is missing reads as an empty text.
    const bool isFine = texts.contains(said.text) || (!said.isThere && isHarmlessWhenMissing(said, form));
    if (isFine)
        return {};
    const QString found = said.isThere ? quoted(said.text) : QStringLiteral("missing");
    return {
        {said.place, QStringLiteral("%1 is %2; write one of %3")
                         .arg(nameIn(form, *said.setting), found, advised(choicesIn(form, *said.setting)))}};
}

Remarks lookAlikeValues(const Subject &subject)
{
    Remarks remarks;
    for (const Said &said : subject.said) {
        const QString plain = lookAlike(said.text, textsOf(subject.form, *said.setting));
        if (!plain.isEmpty())
            remarks.append(
                Lint::lookAlikeRemark(said.place, nameIn(subject.form, *said.setting), said.text, plain));
    }
    return remarks;
}

Remarks lookAlikeNames(const Subject &subject)
{
    Remarks remarks;
    for (const Unread &unread : subject.unread) {
        const QString plain = lookAlike(unread.name, unread.known);
        if (!plain.isEmpty())
            remarks.append(
                Lint::lookAlikeRemark(unread.place, QStringLiteral("the name"), unread.name, plain));
    }
    const QString &identifier = subject.settings.payloadInfo.PayloadIdentifier;
    if (plainForm(identifier) != identifier)
        remarks.append(
            Lint::lookAlikeRemark({}, QStringLiteral("the identifier"), identifier, plainForm(identifier)));
    return remarks;
}

bool isDefault(const Setting &setting, const Subject &subject)
{
    const EditorXmlData standard;
    return sameValue(setting, subject.settings, standard) ||
           sameValue(setting, subject.settings, settingsForProduct(standard, *subject.product));
}

/// Only JSON can name a policy without saying that there is one.
Remarks ignoredPolicy(const Subject &subject)
{
    const EditorXmlData &data = subject.settings;
    if (data.bMIPCheckPolicySet || data.nMIPCheckPolicyOnDocSave == EditorXmlData().nMIPCheckPolicyOnDocSave)
        return {};
    const auto said = std::find_if(subject.said.begin(), subject.said.end(), [](const Said &one) {
        return one.setting->name == QLatin1String("nMIPCheckPolicyOnDocSave");
    });
    return {{said == subject.said.end() ? TextPlace() : said->place,
             QStringLiteral(
                 "nMIPCheckPolicyOnDocSave has no effect without bMIPCheckPolicySet; set that to true")}};
}

/// One setting stands for its item; a plug-in's item is no setting of its own.
bool isFirstOfItem(const Setting &setting, Form form)
{
    const Section section = setting.place.section;
    if (form == Form::Json || section == Section::Plugins)
        return false;
    const auto &items = form == Form::Profile ? profileItems(section) : documentItems(section);
    return std::any_of(items.begin(), items.end(),
                       [&](const SettingItem &item) { return item.settings.front() == &setting; });
}

QString again(const Said &said, const Said &later)
{
    const QString place = later.place.isKnown() ? QStringLiteral(" in ") + later.place.text() : QString();
    return QStringLiteral("\"%1\" is said again%2, which counts; remove one")
        .arg(said.setting->place.key, place);
}

} // namespace

Remarks Lint::wrongValues(const Subject &subject)
{
    Remarks remarks;
    for (const Said &said : subject.said)
        remarks += wrongValue(said, subject.form);
    return remarks;
}

Remarks Lint::lookAlikes(const Subject &subject)
{
    return lookAlikeValues(subject) + lookAlikeNames(subject);
}

Remarks Lint::unread(const Subject &subject)
{
    Remarks remarks;
    for (const Unread &unread : subject.unread) {
        if (lookAlike(unread.name, unread.known).isEmpty())
            remarks.append(
                {unread.place, QStringLiteral("nothing reads the %1%2; correct its name or remove it")
                                   .arg(printableText(unread.text), nearestHint(unread.name, unread.known))});
    }
    return remarks;
}

Remarks Lint::ignoredSettings(const Subject &subject)
{
    Remarks remarks = ignoredPolicy(subject);
    for (const Setting &setting : settings()) {
        const bool isLacking = setting.isOnlyForEditor && !subject.product->isEditor();
        if (isLacking && !isDefault(setting, subject))
            remarks.append(
                {placeOf(subject, setting), QStringLiteral("the %1 has no %2, so it is ignored; remove it")
                                                .arg(subject.product->title, setting.name)});
    }
    return remarks;
}

Remarks Lint::repeatedItems(const Subject &subject)
{
    Remarks remarks;
    QHash<const Setting *, const Said *> counting;
    for (auto said = subject.said.crbegin(); said != subject.said.crend(); ++said) {
        if (!isFirstOfItem(*said->setting, subject.form))
            continue;
        if (const Said *later = counting.value(said->setting))
            remarks.append({said->place, again(*said, *later)});
        else
            counting.insert(said->setting, &*said);
    }
    return remarks;
}
