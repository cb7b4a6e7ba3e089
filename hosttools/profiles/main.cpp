// SPDX-License-Identifier: Apache-2.0
// Stand-in for the macOS command of the same name: the configuration profiles that are installed.
#include "hosttools/base/ToolMain.h"
#include "hosttools/profiles/ConfigurationProfile.h"
#include "hosttools/profiles/ProfileStore.h"
#include "hosttools/security/Document.h"
#include "hosttools/security/Options.h"

#include <QDateTime>

using namespace FlatPkg;
using namespace PropertyList;
using ProfileStore::InstalledProfile;

namespace {

QByteArray dateText(const timespec &time)
{
    const QDateTime utc = QDateTime::fromSecsSinceEpoch(time.tv_sec).toUTC();
    return utc.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss +0000")).toLatin1();
}

/// The profiles of a level, an array that is made when it is asked for first.
plist_t arrayOf(plist_t levels, const QByteArray &level)
{
    if (!plist_dict_get_item(levels, level.constData()))
        insert(levels, level, Node(plist_new_array()));
    return plist_dict_get_item(levels, level.constData());
}

void printNothingInstalled()
{
    printLine("There are no configuration profiles installed for user '" + ConfigurationProfile::userName() +
              '\'');
}

void show()
{
    const std::vector<InstalledProfile> installed = ProfileStore::all();
    if (installed.empty())
        return printNothingInstalled();
    const Node levels(plist_new_dict());
    for (const InstalledProfile &one : installed)
        append(arrayOf(levels.get(), ConfigurationProfile::level(one.profile.get())),
               ConfigurationProfile::shown(one.profile.get(), dateText(one.installed)));
    Document::print(toXml(levels.get()));
}

void list()
{
    const std::vector<InstalledProfile> installed = ProfileStore::all();
    if (installed.empty())
        return printNothingInstalled();
    int number = 0;
    for (const InstalledProfile &one : installed)
        printLine(ConfigurationProfile::level(one.profile.get()) + '[' + QByteArray::number(++number) +
                  "] attribute: profileIdentifier: " + ConfigurationProfile::identifier(one.profile.get()));
}

/// The options of a verb when it is the one that was asked for; a type can only be "configuration".
std::optional<Options> optionsOf(const char *verb, const QVector<QByteArray> &arguments,
                                 const QVector<QByteArray> &required)
{
    if (arguments.value(0) != verb)
        return std::nullopt;
    const auto options = Options::parse(arguments.mid(1), QVector<QByteArray>(required) << "-type");
    const bool rightType = options && (!options->has("-type") || options->value("-type") == "configuration");
    return rightType && options->hasAll(required) ? options : std::nullopt;
}

} // namespace

int main(int argc, char **argv)
{
    const QVector<QByteArray> arguments = argumentsOf(argc, argv);
    const auto shown = optionsOf("show", arguments, {"-output"});
    if (shown && shown->value("-output") == "stdout-xml")
        return runTool("profiles", show);
    if (const auto options = optionsOf("install", arguments, {"-path"}))
        return runTool("profiles", [&] { ProfileStore::install(options->value("-path")); });
    if (const auto options = optionsOf("remove", arguments, {"-identifier"}))
        return runTool("profiles", [&] { ProfileStore::remove(options->value("-identifier")); });
    if (optionsOf("list", arguments, {}))
        return runTool("profiles", list);
    return wrongUsage("profiles", "show -output stdout-xml [-type configuration] | install -path FILE | "
                                  "remove -identifier ID | list");
}
