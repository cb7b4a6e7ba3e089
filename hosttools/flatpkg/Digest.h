// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QMap>
#include <QVector>

#include <optional>
#include <vector>

namespace FlatPkg {

enum class DigestAlgorithm { Md5, Sha1, Sha256, Sha512 };

/// The algorithm that a checksum style of a xar table of contents names ("sha1", "SHA-256", ...), none
/// for "none". Throws Error for a name that it does not know.
std::optional<DigestAlgorithm> digestAlgorithmNamed(const QByteArray &style);

/// The length of a digest in bytes.
int digestLength(DigestAlgorithm algorithm);

/// Raw digests of the same bytes by algorithm.
using Digests = QMap<DigestAlgorithm, QByteArray>;

/// Computes several digests in one pass over the bytes. An instance belongs to one thread.
class DigestSet
{
public:
    explicit DigestSet(const QVector<DigestAlgorithm> &algorithms);
    ~DigestSet();
    DigestSet(DigestSet &&other) noexcept;

    void add(const char *bytes, qint64 count);
    /// The digests of all bytes added; ends the computation.
    Digests finish();

private:
    struct Running;
    std::vector<Running> m_running;
};

/// The digest of bytes in memory.
QByteArray digestOf(DigestAlgorithm algorithm, const QByteArray &bytes);

} // namespace FlatPkg
