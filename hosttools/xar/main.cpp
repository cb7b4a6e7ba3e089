// SPDX-License-Identifier: Apache-2.0
// Stand-in for the macOS command of the same name: reading single members of a package.
#include "hosttools/base/Error.h"
#include "hosttools/base/Output.h"
#include "hosttools/base/ToolMain.h"
#include "hosttools/flatpkg/FlatPackage.h"
#include "hosttools/flatpkg/XarReader.h"

using namespace FlatPkg;

namespace {

const QByteArray dumpOption = QByteArrayLiteral("--dump-toc=");

void listMembers(const QByteArray &archive)
{
    const XarReader reader = within(archive, [&] { return XarReader(archive); });
    forEachEntry(reader.toc(), [](const QByteArray &path, const TocEntry &) { printLine(path); });
}

void dumpToc(const QByteArray &archive, const QByteArray &target)
{
    const XarReader reader = within(archive, [&] { return XarReader(archive); });
    if (target == "-")
        fwrite(reader.tocXml().constData(), 1, static_cast<size_t>(reader.tocXml().size()), stdout);
    else
        within(target, [&] { writeFile(target, reader.tocXml()); });
}

} // namespace

int main(int argc, char **argv)
{
    QVector<QByteArray> arguments = argumentsOf(argc, argv);
    const QByteArray verb = arguments.value(0);
    const bool named = arguments.value(1) == "-f" && arguments.size() >= 3;
    const QByteArray archive = arguments.value(2);
    if (named && verb == "-x" && arguments.value(3) == "-C" && arguments.size() >= 5)
        return runTool("xar", [&] { extractMembers(archive, arguments[4], arguments.mid(5)); });
    if (named && verb == "-t" && arguments.size() == 3)
        return runTool("xar", [&] { listMembers(archive); });
    if (named && verb.startsWith(dumpOption) && arguments.size() == 3)
        return runTool("xar", [&] { dumpToc(archive, verb.mid(dumpOption.size())); });
    return wrongUsage("xar", "-x -f PKG -C DIR [MEMBER...] | -t -f PKG | --dump-toc=FILE -f PKG");
}
