// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>
#include <QList>
#include <QString>
#include <QStringList>

/// The long names of the options, without their dashes.
namespace OptionName {

inline constexpr QLatin1String allowAnyCertificate("allow-any-certificate");
inline constexpr QLatin1String config("config");
inline constexpr QLatin1String force("force");
inline constexpr QLatin1String forUse("for");
inline constexpr QLatin1String from("from");
inline constexpr QLatin1String help("help");
inline constexpr QLatin1String hideCommand("hide-command");
inline constexpr QLatin1String identifier("identifier");
inline constexpr QLatin1String identity("identity");
inline constexpr QLatin1String input("input");
inline constexpr QLatin1String installed("installed");
inline constexpr QLatin1String json("json");
inline constexpr QLatin1String keepConfig("keep-config");
inline constexpr QLatin1String output("output");
inline constexpr QLatin1String product("product");
inline constexpr QLatin1String quickAccess("quick-access");
inline constexpr QLatin1String quiet("quiet");
inline constexpr QLatin1String requireSigned("require-signed");
inline constexpr QLatin1String requireTeam("require-team");
inline constexpr QLatin1String set("set");
inline constexpr QLatin1String sign("sign");
inline constexpr QLatin1String timestamp("timestamp");
inline constexpr QLatin1String trustAnchors("trust-anchors");
inline constexpr QLatin1String uuid("uuid");
inline constexpr QLatin1String vendorTeam("vendor-team");
inline constexpr QLatin1String version("version");

} // namespace OptionName

/// What follows an option, or what an operand is.
struct Value
{
    enum class Kind {
        Text,    ///< anything; shells offer nothing
        Choice,  ///< one of `words`, and nothing else is accepted
        File,    ///< shells offer files with one of the extensions `words`
        Identity ///< the name of a signing identity
    };

    QString name; ///< as the synopsis shows it
    Kind kind = Kind::Text;
    QStringList words;

    static Value text(const char *name);
    static Value choice(const QStringList &words);
    static Value package();
    static Value document(const char *name);
    static Value writtenSettings(const char *name); ///< a document or its JSON
    static Value profile(const char *name);
    static Value settings(const char *name); ///< a file of any kind that holds settings
    static Value identity();
    static Value certificates();
};

/// One option of a verb. All texts are for people, in the style "the package to make".
struct Option
{
    QLatin1String name;
    QString meaning;        ///< in help, completions and manual
    Value value{};          ///< without a name the option takes none
    QLatin1String letter{}; ///< short name, or empty
    QString remark{};       ///< what the manual adds right behind the meaning, as Markdown
    QLatin1String group{};  ///< options of one group exclude each other, see alternatives()
    bool isRequired = false;
    bool isRepeatable = false; ///< may be given more than once

    bool takesValue() const { return !value.name.isEmpty(); }
    QString longForm() const; ///< "--name"
};

/// A word of the command line that belongs to no option; files mostly.
struct Operand
{
    Value value;
    QString meaning;
    bool isOptional = false;
    bool isRepeatable = false; ///< only the last one can be
};

// What a row of a verb says of an option beyond its name and meaning.

Option required(Option option);
Option repeatable(Option option);
Option withRemark(Option option, const QString &remark);
/// The options as a group of which one may be given.
QList<Option> alternatives(QList<Option> options);

/// The option and those that exclude it, in their order.
QList<Option> groupOf(const Option &option, const QList<Option> &options);

// Options that several verbs share.

Option helpOption();
Option versionOption();
Option productOption(const QString &meaning);
Option configOption();
Option jsonOption();
Option quietOption();
