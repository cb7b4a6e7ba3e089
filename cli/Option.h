// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>
#include <QList>
#include <QString>
#include <QStringList>

/// The long names of the options, without their dashes.
namespace OptionName {

/// Clang finds the length of a text while compiling only when it is told, with Qt 5.
template <int size> constexpr QLatin1String latin1(const char (&text)[size])
{
    return QLatin1String(text, size - 1);
}

inline constexpr QLatin1String allowAnyCertificate = latin1("allow-any-certificate");
inline constexpr QLatin1String config = latin1("config");
inline constexpr QLatin1String deep = latin1("deep");
inline constexpr QLatin1String duti = latin1("duti");
inline constexpr QLatin1String description = latin1("description");
inline constexpr QLatin1String displayName = latin1("display-name");
inline constexpr QLatin1String force = latin1("force");
inline constexpr QLatin1String form = latin1("form");
inline constexpr QLatin1String format = latin1("format");
inline constexpr QLatin1String forUse = latin1("for");
inline constexpr QLatin1String from = latin1("from");
inline constexpr QLatin1String help = latin1("help");
inline constexpr QLatin1String hideCommand = latin1("hide-command");
inline constexpr QLatin1String html = latin1("html");
inline constexpr QLatin1String identifier = latin1("identifier");
inline constexpr QLatin1String identity = latin1("identity");
inline constexpr QLatin1String input = latin1("input");
inline constexpr QLatin1String installed = latin1("installed");
inline constexpr QLatin1String jobs = latin1("jobs");
inline constexpr QLatin1String json = latin1("json");
inline constexpr QLatin1String keepConfig = latin1("keep-config");
inline constexpr QLatin1String keychainProfile = latin1("keychain-profile");
inline constexpr QLatin1String markdown = latin1("markdown");
inline constexpr QLatin1String organization = latin1("organization");
inline constexpr QLatin1String output = latin1("output");
inline constexpr QLatin1String product = latin1("product");
inline constexpr QLatin1String provenance = latin1("provenance");
inline constexpr QLatin1String quickAccess = latin1("quick-access");
inline constexpr QLatin1String quiet = latin1("quiet");
inline constexpr QLatin1String removalDisallowed = latin1("removal-disallowed");
inline constexpr QLatin1String report = latin1("report");
inline constexpr QLatin1String requireSigned = latin1("require-signed");
inline constexpr QLatin1String requireTeam = latin1("require-team");
inline constexpr QLatin1String sarif = latin1("sarif");
inline constexpr QLatin1String scope = latin1("scope");
inline constexpr QLatin1String set = latin1("set");
inline constexpr QLatin1String sign = latin1("sign");
inline constexpr QLatin1String stable = latin1("stable");
inline constexpr QLatin1String strictKeys = latin1("strict-keys");
inline constexpr QLatin1String style = latin1("style");
inline constexpr QLatin1String timestamp = latin1("timestamp");
inline constexpr QLatin1String trustAnchors = latin1("trust-anchors");
inline constexpr QLatin1String uuid = latin1("uuid");
inline constexpr QLatin1String variant = latin1("variant");
inline constexpr QLatin1String vendor = latin1("vendor");
inline constexpr QLatin1String vendorTeam = latin1("vendor-team");
inline constexpr QLatin1String verify = latin1("verify");
inline constexpr QLatin1String version = latin1("version");

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
    static Value propertyList(const char *name);
    static Value settings(const char *name); ///< a file of any kind that holds settings
    static Value project(const char *name);
    static Value report(const char *name);
    static Value settingsOrProject(const char *name);
    static Value identity();
    static Value certificates();
    static Value json();
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
