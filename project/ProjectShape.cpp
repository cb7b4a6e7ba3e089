// SPDX-License-Identifier: Apache-2.0
#include "project/ProjectShape.h"

#include "profile/ManagementService.h"

namespace {

using ProjectShape::Field;
using Kind = Field::Kind;

template <int size> constexpr QLatin1String latin1(const char (&text)[size])
{
    return QLatin1String(text, size - 1);
}

Field required(Field field)
{
    field.isRequired = true;
    return field;
}

QString say(const char *text)
{
    return QString::fromLatin1(text);
}

Field object(QLatin1String name, const QString &meaning, const QList<Field> &fields)
{
    return {name, Kind::Object, meaning, {}, fields};
}

Field output(QLatin1String name, const QString &meaning, const QString &fileName, const QList<Field> &fields)
{
    const Field named{latin1("name"), Kind::FileName, say("its file name; otherwise ") + fileName};
    return {name, Kind::OptionalObject, meaning, {}, QList<Field>{named} + fields};
}

Field truth(QLatin1String name, const QString &meaning)
{
    return {name, Kind::Word, meaning, {QStringLiteral("true"), QStringLiteral("false")}};
}

/// What a variant adds to the settings of the project, and the project to the defaults.
QList<Field> settingFields()
{
    return {
        {latin1("config"), Kind::Path, say("a document, or its JSON, that the settings are taken from")},
        {latin1("unset"), Kind::Names, say("settings that get their default")},
        {latin1("set"), Kind::Values, say("settings by name, with values in words where they have words")},
    };
}

QList<Field> vendorFields()
{
    return {
        required({latin1("package"), Kind::Path, say("the vendor's installer package")}),
        {latin1("sha256"), Kind::Text, say("the SHA-256 that it must have")},
        {latin1("signer"), Kind::Text, say("the certificate that it must be signed with")},
        {latin1("team"), Kind::Text, say("the team that must have signed it")},
        {latin1("trust-anchors"), Kind::Path, say("authorities to trust besides Apple's root, in PEM form")},
    };
}

QList<Field> identityFields()
{
    return {
        required({latin1("prefix"), Kind::Text,
                  say("what the identifiers of profiles begin with, before the "
                      "variant's name")}),
        {latin1("organization"), Kind::Text, say("PayloadOrganization of profiles")},
        {latin1("description"), Kind::Text, say("PayloadDescription of profiles")},
        {latin1("scope"),
         Kind::Word,
         say("PayloadScope of profiles"),
         {QStringLiteral("System"), QStringLiteral("User")}},
    };
}

QList<Field> signingFields()
{
    return {
        object(latin1("profile"), say("profiles"),
               {required({latin1("identity"), Kind::Secret, say("who signs them")})}),
        object(latin1("package"), say("packages"),
               {required({latin1("identity"), Kind::Secret, say("who signs them")}),
                {latin1("timestamp"), Kind::Text, say("the timestamp service's address")},
                truth(latin1("allow-any-certificate"),
                      say("sign also with a certificate that is not for packages"))}),
    };
}

QList<Field> variantFields()
{
    return QList<Field>{{latin1("extends"), Kind::Text, say("the variant that this one inherits from")},
                        truth(latin1("abstract"), say("only others are made from it"))} +
           settingFields() +
           QList<Field>{object(latin1("outputs"), say("what is made"), ProjectShape::outputs()),
                        {latin1("allow"), Kind::Names,
                         say("codes of warnings that are taken; any other one is an error")}};
}

} // namespace

const QList<Field> &ProjectShape::outputs()
{
    static const QList<Field> outputs = {
        output(latin1("document"), say("the configuration document"), say("VARIANT.xml"), {}),
        output(
            latin1("profile"), say("a configuration profile"), say("VARIANT.mobileconfig"),
            {truth(latin1("sign"), say("sign it")),
             {latin1("style"), Kind::Word, say("a payload of the product's own type, or forced preferences"),
              ProfileForm::styleWords()},
             {latin1("for"), Kind::Word, say("the device management that it is for"),
              ManagementService::words()},
             {latin1("display-name"), Kind::Text, say("PayloadDisplayName")},
             truth(latin1("removal-disallowed"), say("keep users from removing it"))}),
        output(latin1("plist"), say("the settings as a property list"), say("VARIANT.plist"),
               {{latin1("form"), Kind::Word, say("for whom; otherwise jamf"), settingsFormWords()}}),
        output(latin1("package"), say("a customized package"), say("VARIANT.pkg"),
               {truth(latin1("sign"), say("sign it"))}),
        output(latin1("pkginfo"), say("what munki is told of the package"), say("VARIANT.pkginfo"),
               {{latin1("item-name"), Kind::Text, say("the item's name")},
                {latin1("location"), Kind::Path, say("of the package in the repository")},
                {latin1("catalogs"), Kind::Names, say("otherwise testing")}}),
        output(latin1("report"), say("what people want to know of the variant"), say("VARIANT-report.html"),
               {{latin1("format"),
                 Kind::Word,
                 say("otherwise html"),
                 {QStringLiteral("html"), QStringLiteral("markdown"), QStringLiteral("json")}}}),
    };
    return outputs;
}

const QList<Field> &ProjectShape::fields()
{
    static const QList<Field> fields = {
        required({latin1("version"), Kind::Word, say("of this format"), {QStringLiteral("1")}}),
        required({latin1("product"),
                  Kind::Word,
                  say("the product"),
                  {QStringLiteral("editor"), QStringLiteral("reader")}}),
        object(latin1("vendor"), say("the package that packages are made from"), vendorFields()),
        object(latin1("identity"), say("of profiles"), identityFields()),
        object(latin1("signing"), say("who signs"), signingFields()),
        {latin1("output"), Kind::Folder, say("the folder of the outputs; otherwise dist/${variant}")},
        object(latin1("settings"), say("what all variants begin with"), settingFields()),
        required({latin1("variants"), Kind::Objects, say("what is made, by name"), {}, variantFields()}),
    };
    return fields;
}
