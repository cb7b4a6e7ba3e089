// SPDX-License-Identifier: Apache-2.0
#include "config/SettingText.h"
#include "core/NearestWord.h"
#include "core/PrintableText.h"
#include "project/PlacedProblem.h"
#include "project/Placeholders.h"
#include "project/ProjectShape.h"

#include <QRegularExpression>

namespace {

using Json::Type;
using Json::Value;
using ProjectShape::Field;
using Kind = Field::Kind;

constexpr int shown = 64;

QString quoted(const QString &text)
{
    return QLatin1Char('"') + printableStart(text, shown) + QLatin1Char('"');
}

Problem wrong(const Value &value, const QString &text)
{
    return problemAt(value.place, text);
}

Problem mistyped(const Value &value, const QString &wanted)
{
    return wrong(value, QStringLiteral("%1 is %2").arg(quoted(value.name), wanted));
}

bool isScalar(const Value &value)
{
    return value.type == Type::Text || value.type == Type::Number || value.type == Type::Boolean;
}

bool isVariantName(const QString &name)
{
    static const QRegularExpression form(QStringLiteral("\\A[A-Za-z0-9][A-Za-z0-9_-]{0,63}\\z"));
    return form.match(name).hasMatch();
}

bool isBelowItsFolder(const QString &path)
{
    const QStringList names = path.split(QLatin1Char('/'));
    return !names.contains(QString()) && !names.contains(QStringLiteral("..")) &&
           !names.contains(QStringLiteral(".")) && !path.startsWith(QLatin1Char('~')) &&
           !path.contains(QLatin1Char('\\'));
}

bool isReference(const QString &text)
{
    return text.startsWith(QLatin1String("@env:")) || text.startsWith(QLatin1String("@file:"));
}

/// What holds for every text: nothing is put in for what stands in it, unless the field says so.
Result<> checkText(const Value &value)
{
    if (!isScalar(value) || value.text.isEmpty())
        return mistyped(value, QStringLiteral("a text that is not empty"));
    if (visibleText(value.text) != value.text)
        return mistyped(value, QStringLiteral("a text of one line, without control characters"));
    return {};
}

Result<> checkPlainText(const Value &value)
{
    if (Result<> text = checkText(value); !text)
        return text;
    if (Placeholders::areIn(value.text))
        return wrong(value, QStringLiteral("${...} stands only in the names of outputs; write %1 out")
                                .arg(quoted(value.name)));
    if (isReference(value.text))
        return wrong(value, QStringLiteral("only identities of \"signing\" are taken from elsewhere; write "
                                           "%1 out")
                                .arg(quoted(value.name)));
    return {};
}

Result<> checkWord(const Value &value, const Field &field)
{
    if (isScalar(value) && field.words.contains(value.text))
        return {};
    return mistyped(value, QStringLiteral("\"%1\"").arg(field.words.join(QStringLiteral("\" or \""))));
}

Result<> checkPath(const Value &value)
{
    if (Result<> text = checkPlainText(value); !text)
        return text;
    return isBelowItsFolder(value.text)
               ? Result<>()
               : mistyped(value,
                          QStringLiteral("a path below the project's folder, with \"/\" between names, "
                                         "without \"..\" and \"~\""));
}

Result<> checkPlaceholders(const Value &value)
{
    const Result<> known = Placeholders::check(value.text);
    return known ? known : wrong(value, known.problem().text);
}

Result<> checkFolder(const Value &value)
{
    if (Result<> text = checkText(value); !text)
        return text;
    return isBelowItsFolder(value.text)
               ? checkPlaceholders(value)
               : mistyped(value,
                          QStringLiteral("a folder below the project's, with \"/\" between names, without "
                                         "\"..\" and \"~\""));
}

Result<> checkFileName(const Value &value)
{
    if (Result<> text = checkText(value); !text)
        return text;
    const bool isName = isBelowItsFolder(value.text) && !value.text.contains(QLatin1Char('/')) &&
                        !value.text.startsWith(QLatin1Char('.'));
    return isName ? checkPlaceholders(value)
                  : mistyped(value, QStringLiteral("the name of a file, without \"/\" and no dot in front"));
}

/// A path behind "@file:" may be anywhere, because secrets do not lie in projects.
Result<> checkSecret(const Value &value)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(@env:[A-Za-z_][A-Za-z0-9_]*|@file:[^\\p{C}]+|[^@].*)\\z"));
    if (Result<> text = checkText(value); !text)
        return text;
    if (!form.match(value.text).hasMatch() || Placeholders::areIn(value.text))
        return mistyped(value, QStringLiteral("a text, \"@env:NAME\" or \"@file:PATH\""));
    return {};
}

Result<> checkNames(const Value &value)
{
    if (value.type != Type::List)
        return mistyped(value, QStringLiteral("a list, as in [one, two]"));
    for (Value name : value.values) {
        name.name = value.name;
        if (Result<> text = checkPlainText(name); !text)
            return text;
    }
    return {};
}

/// An empty text is a value of settings that are texts.
Result<> checkSettingValue(const Value &value)
{
    const Result<const Setting *> setting = SettingText::named(value.name);
    if (!setting)
        return problemAt(value.namePlace,
                         setting.problem().text + QStringLiteral("; \"pct config names\" lists them"));
    if (value.type == Type::List)
        return checkNames(value);
    const bool isElement =
        SettingText::typeName(**setting) == QLatin1String("element") && !Placeholders::areIn(value.text);
    if (value.type == Type::Null || (isScalar(value) && (value.text.isEmpty() || isElement)))
        return {};
    return checkPlainText(value);
}

Result<> checkValues(const Value &value)
{
    if (value.type != Type::Object)
        return mistyped(value, QStringLiteral("a mapping of settings, as in {bShowStartPage: false}"));
    for (const Value &setting : value.values) {
        if (Result<> checked = checkSettingValue(setting); !checked)
            return checked;
    }
    return {};
}

Result<> checkField(const Value &value, const Field &field);

const Field *fieldOf(const QList<Field> &fields, const QString &name)
{
    for (const Field &field : fields) {
        if (field.name == name)
            return &field;
    }
    return nullptr;
}

QStringList namesOf(const QList<Field> &fields)
{
    QStringList names;
    for (const Field &field : fields)
        names += field.name;
    return names;
}

Result<> checkMembers(const Value &object, const QList<Field> &fields)
{
    for (const Value &value : object.values) {
        const Field *field = fieldOf(fields, value.name);
        if (!field)
            return problemAt(value.namePlace,
                             QStringLiteral("there is no %1 here%2; allowed are %3")
                                 .arg(quoted(value.name), nearestHint(value.name, namesOf(fields)),
                                      namesOf(fields).join(QStringLiteral(", "))));
        if (Result<> checked = checkField(value, *field); !checked)
            return checked;
    }
    for (const Field &field : fields) {
        if (field.isRequired && !object.member(field.name))
            return wrong(object, QStringLiteral("\"%1\" is missing here: %2").arg(field.name, field.meaning));
    }
    return {};
}

Result<> checkObject(const Value &value, const Field &field)
{
    if (value.type == Type::Object)
        return checkMembers(value, field.fields);
    return mistyped(
        value, QStringLiteral("a mapping with %1").arg(namesOf(field.fields).join(QStringLiteral(", "))));
}

Result<> checkOptionalObject(const Value &value, const Field &field)
{
    const bool isLeftOut = isScalar(value) && value.text == QLatin1String("false");
    return isLeftOut || value.type == Type::Null ? Result<>() : checkObject(value, field);
}

Result<> checkObjects(const Value &value, const Field &field)
{
    if (value.type != Type::Object || value.values.empty())
        return mistyped(value, QStringLiteral("a mapping with at least one variant"));
    for (const Value &each : value.values) {
        if (!isVariantName(each.name))
            return problemAt(
                each.namePlace,
                QStringLiteral("a variant's name has up to 64 letters, digits, \"-\" and \"_\""));
        if (Result<> checked = each.type == Type::Null ? Result<>() : checkObject(each, field); !checked)
            return checked;
    }
    return {};
}

Result<> checkField(const Value &value, const Field &field)
{
    switch (field.kind) {
    case Kind::Text:
        return checkPlainText(value);
    case Kind::Word:
        return checkWord(value, field);
    case Kind::Path:
        return checkPath(value);
    case Kind::Folder:
        return checkFolder(value);
    case Kind::FileName:
        return checkFileName(value);
    case Kind::Secret:
        return checkSecret(value);
    case Kind::Names:
        return checkNames(value);
    case Kind::Values:
        return checkValues(value);
    case Kind::Object:
        return checkObject(value, field);
    case Kind::Objects:
        return checkObjects(value, field);
    case Kind::OptionalObject:
        return checkOptionalObject(value, field);
    }
    return {};
}

} // namespace

Result<> ProjectShape::check(const Json::Value &project)
{
    if (project.type != Type::Object)
        return wrong(project, QStringLiteral("a project is a mapping with %1")
                                  .arg(namesOf(fields()).join(QStringLiteral(", "))));
    return checkMembers(project, fields());
}
