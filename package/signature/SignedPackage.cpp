// SPDX-License-Identifier: Apache-2.0
#include "package/signature/SignedPackage.h"

#include "package/contents/ArchiveHead.h"
#include "package/signature/SignatureElements.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <openssl/evp.h>
#include <QtEndian>
#include <zlib.h>

namespace {

constexpr qint64 largestSignature = 1024LL * 1024;
constexpr qint64 pieceSize = 64LL * 1024;

/// What the digest of a table of contents can be.
struct DigestKind
{
    const char *style;
    const EVP_MD *(*algorithm)();
};
constexpr std::array<DigestKind, 3> digestKinds{
    {{"sha1", EVP_sha1}, {"sha256", EVP_sha256}, {"sha512", EVP_sha512}}};

Problem damaged(const QString &path, const QString &what)
{
    return {path, what + QStringLiteral("; the package is damaged, get it again from where it came")};
}

/// Unpacks and reads the table piece by piece, with the digests that it may have.
class TocPass
{
public:
    TocPass();
    ~TocPass();
    TocPass(const TocPass &) = delete;
    TocPass &operator=(const TocPass &) = delete;

    /// False when the table cannot be read.
    bool run(QFile &file, const ArchiveHead &layout);

    const SignatureElements &elements() const { return m_elements; }
    QByteArray digest();

private:
    bool add(QByteArray piece);
    bool inflatePiece();

    SignatureElements m_elements;
    z_stream m_stream = {};
    bool m_hasEnded = false;
    qint64 m_room = 0;                                      ///< what the table may still unpack to
    std::array<EVP_MD_CTX *, digestKinds.size()> m_digests; ///< which one counts is said within the table
};

TocPass::TocPass()
{
    inflateInit(&m_stream);
    for (size_t kind = 0; kind < digestKinds.size(); ++kind) {
        m_digests[kind] = EVP_MD_CTX_new();
        EVP_DigestInit_ex(m_digests[kind], digestKinds[kind].algorithm(), nullptr);
    }
}

TocPass::~TocPass()
{
    inflateEnd(&m_stream);
    for (EVP_MD_CTX *digest : m_digests)
        EVP_MD_CTX_free(digest);
}

bool TocPass::run(QFile &file, const ArchiveHead &layout)
{
    m_room = layout.plainLength;
    file.seek(layout.toc);
    for (qint64 left = layout.tocLength; left > 0;) {
        const QByteArray piece = file.read(std::min(left, pieceSize));
        if (piece.isEmpty() || !add(piece))
            return false;
        left -= piece.size();
    }
    return m_hasEnded && m_room == 0 && m_elements.finish();
}

bool TocPass::add(QByteArray piece)
{
    for (EVP_MD_CTX *digest : m_digests)
        EVP_DigestUpdate(digest, piece.constData(), static_cast<size_t>(piece.size()));
    m_stream.next_in = reinterpret_cast<Bytef *>(piece.data());
    m_stream.avail_in = static_cast<uInt>(piece.size());
    while (m_stream.avail_in > 0) {
        if (m_hasEnded || !inflatePiece())
            return false;
    }
    return true;
}

bool TocPass::inflatePiece()
{
    QByteArray plain(static_cast<int>(pieceSize), Qt::Uninitialized);
    do {
        m_stream.next_out = reinterpret_cast<Bytef *>(plain.data());
        m_stream.avail_out = static_cast<uInt>(plain.size());
        const int result = inflate(&m_stream, Z_NO_FLUSH);
        const auto produced = static_cast<int>(plain.size() - static_cast<int>(m_stream.avail_out));
        m_hasEnded = result == Z_STREAM_END;
        m_room -= produced;
        const bool goesOn = result == Z_OK || result == Z_STREAM_END || result == Z_BUF_ERROR;
        if (!goesOn || m_room < 0 || !m_elements.add(plain.constData(), produced))
            return false;
    } while (!m_hasEnded && m_stream.avail_out == 0);
    return true;
}

/// The one that the package says it has; empty for a kind that no signature goes with.
QByteArray TocPass::digest()
{
    const QByteArray style = m_elements.digestStyle.toLower().replace('-', "");
    for (size_t kind = 0; kind < digestKinds.size(); ++kind) {
        if (style != digestKinds[kind].style)
            continue;
        QByteArray digest(EVP_MAX_MD_SIZE, '\0');
        unsigned size = 0;
        EVP_DigestFinal_ex(m_digests[kind], reinterpret_cast<unsigned char *>(digest.data()), &size);
        return digest.left(static_cast<int>(size));
    }
    return {};
}

/// The bytes at a place in the heap; without any the flaw is noted.
std::optional<QByteArray> bytesAt(QFile &file, const ArchiveHead &layout, const HeapPlace &place,
                                  const QString &what, QStringList *flaws)
{
    const qint64 heapSize = file.size() - layout.heap();
    const bool isInside = place.offset >= 0 && place.size > 0 && place.offset <= heapSize &&
                          place.size <= heapSize - place.offset;
    if (!isInside)
        flaws->append(what + QStringLiteral(" would lie outside of it"));
    else if (place.size > largestSignature)
        flaws->append(what + QStringLiteral(" is larger than 1 MiB"));
    else if (file.seek(layout.heap() + place.offset))
        return file.read(place.size);
    return std::nullopt;
}

bool overlap(const HeapPlace &a, const HeapPlace &b)
{
    return a.size > 0 && b.size > 0 && a.offset < b.offset + b.size && b.offset < a.offset + a.size;
}

qint64 endOf(const HeapPlace &place)
{
    return place.offset + place.size;
}

std::optional<PackageSignatureBytes> signatureAt(QFile &file, const ArchiveHead &layout,
                                                 const std::optional<SignatureElement> &element,
                                                 const QString &what, QStringList *flaws)
{
    if (!element)
        return std::nullopt;
    if (element->hasTooManyCertificates)
        flaws->append(what + QStringLiteral(" has too many or too large certificates"));
    const auto bytes = bytesAt(file, layout, element->place, what, flaws);
    if (!bytes)
        return std::nullopt;
    return PackageSignatureBytes{*bytes, element->certificates};
}

void readParts(QFile &file, const ArchiveHead &layout, const SignatureElements &elements,
               SignedPackage *package)
{
    const HeapPlace none;
    const HeapPlace rsa = elements.rsa ? elements.rsa->place : none;
    const HeapPlace cms = elements.cms ? elements.cms->place : none;
    QStringList *flaws = &package->flaws;
    package->rsa = signatureAt(file, layout, elements.rsa, QStringLiteral("its RSA signature"), flaws);
    package->cms = signatureAt(file, layout, elements.cms, QStringLiteral("its CMS signature"), flaws);
    if (!elements.rsa && !elements.cms)
        return;
    const auto digest = bytesAt(file, layout, elements.digest, QStringLiteral("its digest"), flaws);
    package->storedDigest = digest.value_or(QByteArray());
    if (flaws->isEmpty() &&
        (overlap(rsa, cms) || overlap(rsa, elements.digest) || overlap(cms, elements.digest)))
        flaws->append(QStringLiteral("its signatures overlap"));
    if (flaws->isEmpty() && (endOf(rsa) > elements.firstMember || endOf(cms) > elements.firstMember))
        flaws->append(QStringLiteral("its signatures lie among its members"));
}

/// The last sixteen bytes: a mark, the version, the type 2 and the length of the ticket in front of it.
bool hasTicketAtEnd(QFile &file)
{
    constexpr qint64 trailerSize = 16;
    constexpr quint16 ticketType = 2;
    if (file.size() < trailerSize || !file.seek(file.size() - trailerSize))
        return false;
    const QByteArray trailer = file.read(trailerSize);
    return trailer.size() == trailerSize && trailer.startsWith("t8lr") &&
           qFromLittleEndian<quint16>(trailer.constData() + 6) == ticketType;
}

} // namespace

Result<SignedPackage> SignedPackage::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Problem{path, QStringLiteral("cannot be read (%1)").arg(file.errorString())};
    const Result<ArchiveHead> layout = ArchiveHead::read(file);
    if (!layout)
        return layout.problem();
    TocPass pass;
    if (!pass.run(file, *layout))
        return damaged(path, QStringLiteral("its table of contents cannot be read"));
    SignedPackage package;
    package.digest = pass.digest();
    package.hasTicket = hasTicketAtEnd(file);
    readParts(file, *layout, pass.elements(), &package);
    return package;
}
