// SPDX-License-Identifier: Apache-2.0
// Stand-in for the macOS command of the same name: signing flat packages.
#include "hosttools/base/Error.h"
#include "hosttools/base/ToolMain.h"
#include "hosttools/productsign/PackageSignature.h"
#include "hosttools/productsign/SignPackage.h"

#include <cstdio>
#include <optional>

using namespace FlatPkg;

namespace {

struct Request
{
    QByteArray identity;
    QByteArray timestampService; ///< empty for none
    bool anyCertificate = false;
    bool strictKeys = false; ///< none that others can read
    QByteArray input;
    QByteArray output;
};

void say(const QByteArray &text)
{
    printLine("productsign: " + text);
}

/// The last two words are files; what is no option of ours has no meaning.
std::optional<Request> requestIn(QVector<QByteArray> arguments)
{
    Request request;
    while (arguments.size() > 2) {
        const QByteArray option = arguments.takeFirst();
        if (option == "--sign" && request.identity.isEmpty())
            request.identity = arguments.takeFirst();
        else if (option == "--timestamp=none")
            request.timestampService.clear();
        else if (option.startsWith("--timestamp="))
            request.timestampService = option.mid(static_cast<int>(qstrlen("--timestamp=")));
        else if (option == "--allow-any-certificate")
            request.anyCertificate = true;
        else if (option == "--strict-keys")
            request.strictKeys = true;
        else
            return std::nullopt;
    }
    request.input = arguments.value(0);
    request.output = arguments.value(1);
    const bool isComplete = arguments.size() == 2 && !request.identity.isEmpty();
    return isComplete ? std::make_optional(request) : std::nullopt;
}

void requirePrivacy(const Identity &identity, bool strictKeys)
{
    if (identity.exposedKeyPath.isEmpty())
        return;
    const QByteArray remark =
        printable(identity.exposedKeyPath) + ": others can read this private key; chmod 600 keeps it private";
    if (strictKeys)
        throw Error(remark);
    std::fprintf(stderr, "productsign: %s\n", remark.constData());
}

void sign(const Request &request)
{
    const auto use = request.anyCertificate ? Identities::Use::PackageByAnybody : Identities::Use::Package;
    const Identity identity = Identities::forSigning(request.identity, use);
    requirePrivacy(identity, request.strictKeys);
    const PackageSignature signature(identity, request.timestampService);
    signPackage(request.input, request.output, signature);
    if (!request.timestampService.isEmpty())
        say("using timestamp authority for signature");
    say("signing product with identity \"" + identity.name + "\" from " + Identities::folder());
    for (const QByteArray &name : signature.names())
        say("adding certificate \"" + name + '"');
    say("Wrote signed product archive to " + request.output);
}

} // namespace

int main(int argc, char **argv)
{
    const auto request = requestIn(argumentsOf(argc, argv));
    if (!request)
        return wrongUsage(
            "productsign",
            "--sign IDENTITY [--timestamp=URL|none] [--allow-any-certificate] [--strict-keys] PKG OUTPUT");
    return runTool("productsign", [&] { sign(*request); });
}
