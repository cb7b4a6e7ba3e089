// SPDX-License-Identifier: Apache-2.0
#include "hosttools/pkgutil/SignedParts.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/XmlReader.h"
#include "hosttools/flatpkg/XarReader.h"

#include <algorithm>
#include <functional>
#include <limits>

using namespace FlatPkg;
using namespace OpenSsl;

namespace {

constexpr qint64 largestSignature = 1024 * 1024;
constexpr size_t mostCertificates = 32;

Certificate certificateIn(const QByteArray &base64)
{
    const QByteArray der = QByteArray::fromBase64(base64);
    const auto *bytes = reinterpret_cast<const unsigned char *>(der.constData());
    Certificate certificate(d2i_X509(nullptr, &bytes, der.size()));
    if (!certificate)
        fail("its signature has a certificate that cannot be read");
    return certificate;
}

void readCertificates(XmlReader &xml, std::vector<Certificate> *certificates)
{
    while (xml.readNextStartElement()) {
        if (!xml.at("X509Certificate"))
            readCertificates(xml, certificates);
        else if (certificates->size() == mostCertificates)
            throw Error("its signature has too many certificates");
        else
            certificates->push_back(certificateIn(xml.readText()));
    }
}

QByteArray bytesAt(const XarReader &package, qint64 offset, qint64 size)
{
    const qint64 heapSize = package.size() - package.heapOffset();
    if (offset < 0 || size < 1 || size > largestSignature || offset > heapSize || size > heapSize - offset)
        throw Error("its signature would lie outside of it");
    QByteArray bytes(static_cast<int>(size), Qt::Uninitialized);
    readExactly(package.descriptor(), bytes.data(), size, package.heapOffset() + offset);
    return bytes;
}

SignedPart readPart(XmlReader &xml, const XarReader &package)
{
    qint64 size = -1;
    SignedPart part;
    while (xml.readNextStartElement()) {
        if (xml.at("offset"))
            part.offset = xml.readText().trimmed().toLongLong();
        else if (xml.at("size"))
            size = xml.readText().trimmed().toLongLong();
        else if (xml.at("KeyInfo"))
            readCertificates(xml, &part.certificates);
        else
            xml.skipCurrentElement();
    }
    part.bytes = bytesAt(package, part.offset, size);
    return part;
}

qint64 endOf(const SignedPart &part)
{
    return part.offset + part.bytes.size();
}

qint64 firstByteOf(const std::vector<TocEntry> &entries)
{
    qint64 first = std::numeric_limits<qint64>::max();
    for (const TocEntry &entry : entries) {
        first = std::min(first, firstByteOf(entry.children));
        if (entry.data && entry.data->length > 0)
            first = std::min(first, entry.data->offset);
    }
    return first;
}

/// What lies in two places at once can be made to look like either.
void requireOwnPlaces(const SignedParts &parts, const XarReader &package)
{
    const qint64 firstMember = firstByteOf(package.toc().entries);
    for (const auto &part : {std::cref(parts.rsa), std::cref(parts.cms)})
        if (part.get() && endOf(*part.get()) > firstMember)
            throw Error("its signature lies among its members");
    if (parts.rsa && parts.cms && parts.rsa->offset < endOf(*parts.cms) &&
        parts.cms->offset < endOf(*parts.rsa))
        throw Error("its signatures overlap");
}

} // namespace

SignedParts SignedParts::read(const XarReader &package)
{
    XmlLimits limits;
    limits.elements = 2500000;
    XmlReader xml(package.tocXml(), "its table of contents ", limits);
    SignedParts parts;
    xml.readNextStartElement();
    if (!xml.readNextStartElement())
        return parts;
    while (xml.readNextStartElement()) {
        if (xml.at("signature") && !parts.rsa)
            parts.rsa = readPart(xml, package);
        else if (xml.at("x-signature") && !parts.cms)
            parts.cms = readPart(xml, package);
        else
            xml.skipCurrentElement();
    }
    requireOwnPlaces(parts, package);
    return parts;
}
