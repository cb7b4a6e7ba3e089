// SPDX-License-Identifier: Apache-2.0
// Stand-in for the macOS command of the same name: signing identities and signed messages.
#include "hosttools/base/Error.h"
#include "hosttools/base/ToolMain.h"
#include "hosttools/security/Document.h"
#include "hosttools/security/Identity.h"
#include "hosttools/security/Options.h"
#include "hosttools/security/SignedMessage.h"

#include <cstdio>

using namespace FlatPkg;

namespace {

void warn(const QByteArray &message)
{
    std::fprintf(stderr, "security: %s\n", printable(message).constData());
}

void warnWhenExposed(const Identity &identity)
{
    if (!identity.exposedKeyPath.isEmpty())
        warn(identity.exposedKeyPath + ": others can read this private key; chmod 600 keeps it private");
}

/// Under the policy "basic" a Mac lists every valid identity, under "codesigning" those of installer packages
/// never.
void listValidIdentities(Identities::Use use)
{
    int count = 0;
    QVector<QByteArray> unusable;
    for (const Identity &identity : Identities::all(&unusable)) {
        warnWhenExposed(identity);
        if (Identities::obstacle(identity, use).isEmpty())
            std::printf("%3d) %s \"%s\"\n", ++count, identity.fingerprint.constData(),
                        identity.name.constData());
    }
    std::printf("     %d valid identities found\n", count);
    for (const QByteArray &message : unusable)
        warn(message + "; it is left out");
}

/// The digest that -H names. Without it SHA-256, where the Mac's command takes SHA-1; null for what it lacks.
const EVP_MD *digestOf(const Options &options)
{
    const QByteArray name = options.has("-H") ? options.value("-H") : QByteArrayLiteral("SHA256");
    const bool isKnown = name == "SHA1" || name == "SHA256" || name == "SHA384" || name == "SHA512";
    return isKnown ? EVP_get_digestbyname(name.constData()) : nullptr;
}

void sign(const Options &options)
{
    const QByteArray input = options.value("-i");
    const QByteArray output = options.value("-o");
    const Identity identity = Identities::forSigning(options.value("-N"), Identities::Use::Code);
    warnWhenExposed(identity);
    const QByteArray content = within(input, [&] { return Document::read(input, Document::largestSize); });
    const QByteArray message =
        within(input, [&] { return SignedMessage::made(content, identity, digestOf(options)); });
    within(output, [&] { Document::replace(output, message); });
}

/// What -h puts in front of the content. A name stands there as it is, even one that looks like more headers;
/// so does the Mac's command.
QByteArray headers(const SignedMessage::Contents &contents)
{
    QByteArray text =
        "SMIME: \tlevel=0.1; type=signedData; nsigners=" + QByteArray::number(int(contents.signers.size())) +
        "; ";
    int number = 0;
    for (const OpenSsl::Certificate &signer : contents.signers) {
        const QByteArray word = "signer" + QByteArray::number(number++);
        const bool trusted = SignedMessage::isTrusted(signer.get(), contents);
        text += "\n\t\t" + word + ".id=\"" + OpenSsl::commonName(signer.get()) + "\"; " + word +
                ".status=" + (trusted ? "GoodSignature" : "SigningCertNotTrusted") + "; ";
    }
    return text + '\n';
}

void decode(const Options &options)
{
    const QByteArray input = options.value("-i");
    const SignedMessage::Contents contents = within(
        input, [&] { return SignedMessage::decoded(Document::read(input, Document::largestSignedSize)); });
    QByteArray result = options.has("-h") ? headers(contents) : QByteArray();
    if (!options.has("-n"))
        result += contents.bytes;
    const QByteArray output = options.value("-o");
    if (options.has("-o"))
        within(output, [&] { Document::replace(output, result); });
    else
        Document::print(result);
}

/// What for, when the valid identities are asked for.
std::optional<Identities::Use> askedUse(const QVector<QByteArray> &arguments)
{
    const auto options = Options::parse(arguments.mid(1), {"-p"}, {"-v"});
    if (arguments.value(0) != "find-identity" || !options || !options->has("-v"))
        return std::nullopt;
    if (options->value("-p") == "codesigning")
        return Identities::Use::Code;
    return options->value("-p") == "basic" ? std::make_optional(Identities::Use::Package) : std::nullopt;
}

std::optional<Options> messageOptions(const QVector<QByteArray> &arguments)
{
    if (arguments.value(0) != "cms")
        return std::nullopt;
    return Options::parse(arguments.mid(1), {"-N", "-i", "-o", "-h", "-H"}, {"-S", "-D", "-n"});
}

} // namespace

int main(int argc, char **argv)
{
    const QVector<QByteArray> arguments = argumentsOf(argc, argv);
    if (const auto use = askedUse(arguments))
        return runTool("security", [&] { listValidIdentities(*use); });
    const auto cms = messageOptions(arguments);
    if (cms && cms->hasAll({"-S", "-N", "-i", "-o"}) && !cms->hasAny({"-D", "-h", "-n"}) && digestOf(*cms))
        return runTool("security", [&] { sign(*cms); });
    if (cms && cms->hasAll({"-D", "-i"}) && !cms->hasAny({"-S", "-N", "-H"}))
        return runTool("security", [&] { decode(*cms); });
    return wrongUsage("security",
                      "find-identity -v -p codesigning|basic | cms -S -N NAME [-H DIGEST] -i IN -o OUT | "
                      "cms -D -i IN [-h LEVEL] [-n] [-o OUT]");
}
