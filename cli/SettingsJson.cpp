// SPDX-License-Identifier: Apache-2.0
#include "cli/SettingsJson.h"

#include "cli/SettingsFile.h"
#include "cli/SettingValue.h"
#include "config/KeptElement.h"
#include "config/Product.h"
#include "config/SettingItems.h"
#include "config/XmlText.h"
#include "config/XmlTree.h"
#include "core/NearestWord.h"
#include "core/PrintableText.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

using Json::Type;
using Json::Value;

const QString settingsName = QStringLiteral("settings");

Problem wrong(const Json::Place &place, const QString &what)
{
    return {{}, QStringLiteral("%1: %2").arg(place.text(), what)};
}

Problem mistyped(const Value &value, const QString &wanted)
{
    return wrong(value.place, QStringLiteral("\"%1\" is %2").arg(printableStart(value.name, 64), wanted));
}

Problem unknown(const Value &value, const QStringList &known)
{
    return wrong(value.namePlace, QStringLiteral("there is no \"%1\"%2")
                                      .arg(printableStart(value.name, 64), nearestHint(value.name, known)));
}

QStringList settingNames()
{
    QStringList names;
    for (const Setting &setting : settings())
        names += setting.name;
    return names;
}

Result<> assign(const Value &value, const Setting &, bool &member)
{
    if (value.type != Type::Boolean)
        return mistyped(value, QStringLiteral("true or false"));
    member = value.isTrue;
    return {};
}

Result<> assign(const Value &value, const Setting &, int &member)
{
    bool isInteger = false;
    const int number = value.text.toInt(&isInteger);
    if (value.type != Type::Number || !isInteger)
        return mistyped(value, QStringLiteral("an integer"));
    member = number;
    return {};
}

Result<> assign(const Value &value, const Setting &, QString &member)
{
    if (value.type != Type::Text)
        return mistyped(value, QStringLiteral("a text"));
    if (!isXmlText(value.text))
        return wrong(value.place, QStringLiteral("no document can hold the control characters of this text"));
    member = value.text;
    return {};
}

Result<> assign(const Value &value, const Setting &setting, QDomElement &member)
{
    member = {};
    if (value.type == Type::Null)
        return {};
    const QString tag = elementName(setting.place.section);
    const Result<QDomDocument> document = XmlTree::read(value.text.toUtf8());
    if (value.type != Type::Text || !document || document->documentElement().tagName() != tag)
        return mistyped(value, QStringLiteral("an element \"%1\" as XML, or null").arg(tag));
    member = keptElement(document->documentElement());
    return {};
}

Result<> readSetting(const Value &value, EditorXmlData &data)
{
    for (const Setting &setting : settings()) {
        if (value.name == setting.name)
            return std::visit([&](auto member) { return assign(value, setting, data.*member); },
                              setting.member);
    }
    return unknown(value, settingNames());
}

Result<> readSettingsObject(const Value &object, EditorXmlData &data)
{
    if (object.type != Type::Object)
        return mistyped(object, QStringLiteral("an object"));
    for (const Value &value : object.values) {
        if (Result<> read = readSetting(value, data); !read)
            return read;
    }
    return {};
}

Result<> readIdentity(const Value &object, ProfilePayloadInfo &identity)
{
    if (object.type != Type::Object)
        return mistyped(object, QStringLiteral("an object"));
    const QList<QPair<QString, QString ProfilePayloadInfo::*>> members = {
        {QStringLiteral("PayloadDisplayName"), &ProfilePayloadInfo::PayloadDisplayName},
        {QStringLiteral("PayloadIdentifier"), &ProfilePayloadInfo::PayloadIdentifier},
        {QStringLiteral("PayloadUUID"), &ProfilePayloadInfo::PayloadUUID},
        {QStringLiteral("PayloadOrganization"), &ProfilePayloadInfo::PayloadOrganization},
        {QStringLiteral("PayloadDescription"), &ProfilePayloadInfo::PayloadDescription}};
    QStringList known;
    for (const auto &member : members)
        known += member.first;
    for (const Value &value : object.values) {
        const auto which = known.indexOf(value.name);
        if (which < 0)
            return unknown(value, known);
        if (value.type != Type::Text)
            return mistyped(value, QStringLiteral("a text"));
        identity.*members.at(which).second = value.text;
    }
    return {};
}

Result<> readProduct(const Value &value, SettingsFile &file)
{
    file.product = value.type == Type::Text ? Product::find(&Product::word, value.text) : nullptr;
    return file.product ? Result<>() : mistyped(value, QStringLiteral("\"editor\" or \"reader\""));
}

Result<> readKind(const Value &value, SettingsFile &file)
{
    const QStringList kinds{QStringLiteral("document"), QStringLiteral("profile"), QStringLiteral("package")};
    if (value.type != Type::Text || !kinds.contains(value.text))
        return mistyped(value, QStringLiteral("\"document\", \"profile\" or \"package\""));
    file.kind = value.text;
    return {};
}

/// What was said of the file that the settings came from counts no more.
Result<> passOver(const Value &, SettingsFile &)
{
    return {};
}

struct Member
{
    QString name;
    Result<> (*read)(const Value &, SettingsFile &);
};

const QList<Member> &members()
{
    static const QList<Member> all = {
        {QStringLiteral("kind"), readKind},
        {QStringLiteral("product"), readProduct},
        {settingsName,
         [](const Value &value, SettingsFile &file) { return readSettingsObject(value, file.settings); }},
        {QStringLiteral("identity"),
         [](const Value &value, SettingsFile &file) {
             return readIdentity(value, file.settings.payloadInfo);
         }},
        {QStringLiteral("warnings"), passOver},
        {QStringLiteral("installation"), passOver},
        {QStringLiteral("signer"), passOver},
        {QStringLiteral("signers"), passOver}};
    return all;
}

Result<> readMember(const Value &value, bool takesSettings, SettingsFile &file)
{
    QStringList known;
    for (const Member &member : members()) {
        if (value.name == member.name)
            return member.read(value, file);
        known += member.name;
    }
    const QStringList names = settingNames();
    if (takesSettings && names.contains(value.name))
        return readSetting(value, file.settings);
    return unknown(value, takesSettings ? known + names : known);
}

} // namespace

const Json::Value &settingsIn(const Json::Value &root)
{
    const Value *settings = root.member(settingsName);
    return settings ? *settings : root;
}

Result<> readSettingsJson(const QByteArray &json, SettingsFile &file)
{
    const Result<Value> root = Json::read(json);
    if (!root)
        return root.problem();
    if (root->type != Type::Object)
        return wrong(root->place, QStringLiteral("it is no object"));
    file.kind = QStringLiteral("document");
    for (const Value &value : root->values) {
        if (Result<> read = readMember(value, &settingsIn(*root) == &*root, file); !read)
            return read;
    }
    return {};
}

QByteArray changedSettingsJson(const QByteArray &json, const std::vector<const Setting *> &changed,
                               const EditorXmlData &data)
{
    QJsonObject root = QJsonDocument::fromJson(json).object();
    const bool isNested = root.contains(settingsName);
    QJsonObject values = isNested ? root.value(settingsName).toObject() : root;
    for (const Setting *setting : changed)
        values.insert(setting->name, settingValue(*setting, data));
    if (isNested)
        root.insert(settingsName, values);
    return QJsonDocument(isNested ? root : values).toJson();
}
