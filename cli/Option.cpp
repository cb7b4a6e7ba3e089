// SPDX-License-Identifier: Apache-2.0
#include "cli/Option.h"
#include "config/Product.h"

#include <algorithm>
#include <iterator>

Value Value::text(const char *name)
{
    return {QString::fromLatin1(name), Kind::Text, {}};
}

Value Value::choice(const QStringList &words)
{
    return {words.join(QLatin1Char('|')), Kind::Choice, words};
}

Value Value::package()
{
    return {QStringLiteral("PKG"), Kind::File, {QStringLiteral("pkg")}};
}

Value Value::document(const char *name)
{
    return {QString::fromLatin1(name), Kind::File, {QStringLiteral("xml")}};
}

Value Value::writtenSettings(const char *name)
{
    return {QString::fromLatin1(name), Kind::File, {QStringLiteral("xml"), QStringLiteral("json")}};
}

Value Value::profile(const char *name)
{
    return {QString::fromLatin1(name), Kind::File, {QStringLiteral("mobileconfig")}};
}

Value Value::propertyList(const char *name)
{
    return {QString::fromLatin1(name), Kind::File, {QStringLiteral("plist")}};
}

Value Value::settings(const char *name)
{
    return {QString::fromLatin1(name),
            Kind::File,
            {QStringLiteral("xml"), QStringLiteral("mobileconfig"), QStringLiteral("pkg"),
             QStringLiteral("json")}};
}

Value Value::settingsOrProject(const char *name)
{
    Value value = settings(name);
    value.words += QStringList{QStringLiteral("yaml"), QStringLiteral("yml")};
    return value;
}

Value Value::identity()
{
    return {QStringLiteral("IDENTITY"), Kind::Identity, {}};
}

Value Value::certificates()
{
    return {QStringLiteral("FILE"), Kind::File, {QStringLiteral("pem")}};
}

Value Value::project(const char *name)
{
    return {QString::fromLatin1(name),
            Kind::File,
            {QStringLiteral("yaml"), QStringLiteral("yml"), QStringLiteral("json")}};
}

Value Value::report(const char *name)
{
    return {QString::fromLatin1(name),
            Kind::File,
            {QStringLiteral("html"), QStringLiteral("md"), QStringLiteral("json")}};
}

Value Value::json()
{
    return {QStringLiteral("FILE"), Kind::File, {QStringLiteral("json")}};
}

QString Option::longForm() const
{
    return QStringLiteral("--") + name;
}

Option required(Option option)
{
    option.isRequired = true;
    return option;
}

Option repeatable(Option option)
{
    option.isRepeatable = true;
    return option;
}

Option withRemark(Option option, const QString &remark)
{
    option.remark = remark;
    return option;
}

QList<Option> alternatives(QList<Option> options)
{
    const QLatin1String group = options.first().name;
    for (Option &option : options)
        option.group = group;
    return options;
}

QList<Option> groupOf(const Option &option, const QList<Option> &options)
{
    if (option.group.isEmpty())
        return {option};
    QList<Option> group;
    std::copy_if(options.begin(), options.end(), std::back_inserter(group),
                 [&](const Option &other) { return other.group == option.group; });
    return group;
}

Option helpOption()
{
    Option option{OptionName::help, QStringLiteral("show this help and exit"), {}, QLatin1String("h")};
    option.remark =
        QStringLiteral("; without a verb it lists them, like `pct help`, and behind a verb it explains "
                       "that one, like `pct help VERB`");
    return option;
}

Option versionOption()
{
    return {OptionName::version, QStringLiteral("show the version and exit"), {}, QLatin1String("v")};
}

Option productOption(const QString &meaning)
{
    return {OptionName::product, meaning, Value::choice({Product::editor().word, Product::reader().word})};
}

Option configOption()
{
    Option option{OptionName::config,
                  QStringLiteral("configuration document with the settings; without any the defaults"),
                  Value::writtenSettings("DOC")};
    option.remark =
        QStringLiteral(". JSON as `pct show --json` prints it does as well. What it does not mention has its "
                       "default, too; a document of the other product is accepted with a warning");
    return option;
}

Option jsonOption()
{
    return {OptionName::json, QStringLiteral("write the result as JSON")};
}

Option quietOption()
{
    Option option{
        OptionName::quiet, QStringLiteral("no warnings and no confirmation"), {}, QLatin1String("q")};
    option.remark = QStringLiteral("; errors still appear, and warnings are still in the JSON");
    return option;
}
