// SPDX-License-Identifier: Apache-2.0
#include "hosttools/productsign/SignPackage.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Output.h"
#include "hosttools/flatpkg/ByteRange.h"
#include "hosttools/flatpkg/VerifiedDigest.h"
#include "hosttools/flatpkg/XarHead.h"
#include "hosttools/flatpkg/XarReader.h"
#include "hosttools/productsign/PackageSignature.h"
#include "hosttools/productsign/TocEdit.h"

#include <algorithm>
#include <optional>
#include <unistd.h>

using namespace FlatPkg;

namespace {

/// All members of a package, wherever they lie in it.
ByteRange membersOf(const XarReader &package, const TocEdit &toc)
{
    if (toc.endByte() > package.size() - package.heapOffset())
        throw Error("its table of contents leads beyond its end; the package is damaged");
    return {package.descriptor(), package.heapOffset() + toc.firstByte(), toc.endByte() - toc.firstByte()};
}

XarHead headFor(const TocEdit &toc, const ByteRange &members, const PackageSignature &signature)
{
    const qint64 unit = sharingUnitFor(members.length);
    const QByteArray text = toc.text(signature.elements(), signature.size());
    const int lines = blankLinesFor(text, {signature.size(), members.offset % unit, unit});
    return xarHead(text + QByteArray(lines, '\n'));
}

/// The kernel can share only what begins with a page.
void copyMembers(const ByteRange &members, int to, qint64 toOffset)
{
    const qint64 unit = sharingUnitFor(members.length);
    const qint64 first = std::min(members.length, (unit - members.offset % unit) % unit);
    copyRange({members.fd, members.offset, first}, to, toOffset);
    copyRange({members.fd, members.offset + first, members.length - first}, to, toOffset + first);
}

void requireReadable(int package, const XarReader &original)
{
    const XarReader reader(FileDescriptor(dup(package)));
    if (reader.toc().entries.size() != original.toc().entries.size())
        throw Error("does not hold what has been written to it; check the disk");
}

void writeSigned(const XarReader &package, const PackageSignature &signature, int to)
{
    const QByteArray before = fingerprintOf(package.descriptor());
    const TocEdit toc(package.tocXml());
    const ByteRange members = membersOf(package, toc);
    const XarHead head = headFor(toc, members, signature);
    const QByteArray signedHead = head.bytes + signature.over(head.tocDigest);
    writeAll(to, signedHead.constData(), signedHead.size(), 0);
    copyMembers(members, to, signedHead.size());
    if (fingerprintOf(package.descriptor()) != before)
        throw Error("has changed while it was signed");
}

} // namespace

void signPackage(const QByteArray &input, const QByteArray &output, const PackageSignature &signature)
{
    const XarReader package = within(input, [&] { return XarReader(input); });
    std::optional<OutputFile> file;
    within(output, [&] { file.emplace(output); });
    within(input, [&] { writeSigned(package, signature, file->get()); });
    within(output, [&] {
        requireReadable(file->get(), package);
        file->commit();
    });
}
