// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/Error.h"
#include "hosttools/flatpkg/ByteRange.h"
#include "hosttools/flatpkg/DigestThread.h"
#include "hosttools/flatpkg/MappedRange.h"

#include <QCryptographicHash>
#include <QTemporaryFile>
#include <QTest>

#include <unistd.h>

using namespace FlatPkg;

namespace {

constexpr int mebibyte = 1024 * 1024;
const QVector<DigestAlgorithm> sha1{DigestAlgorithm::Sha1};

} // namespace

/// Hashing files that are as they should be, and files that somebody makes shorter meanwhile.
class tst_ByteRange : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_file.reset(new QTemporaryFile);
        QVERIFY(m_file->open() && m_file->write(m_bytes) == m_bytes.size() && m_file->flush());
    }

    void aFileIsHashedInWholeAndInParts()
    {
        QCOMPARE(digestOf(0, m_bytes.size()), QCryptographicHash::hash(m_bytes, QCryptographicHash::Sha1));
        const QByteArray part = m_bytes.mid(12345, 5 * mebibyte);
        QCOMPARE(digestOf(12345, part.size()), QCryptographicHash::hash(part, QCryptographicHash::Sha1));
    }

    void aFileThatIsShorterThanItsRangeIsAnError()
    {
        QVERIFY_EXCEPTION_THROWN(digestOf(0, m_bytes.size() + 3 * mebibyte), Error);
        QVERIFY_EXCEPTION_THROWN(digestOf(m_bytes.size() + mebibyte, 1), Error);
    }

    void aFileThatIsMadeShorterBehindAThreadIsAnError()
    {
        DigestThread digests(m_file->handle(), 0, sha1);
        digests.add(mebibyte);
        QCOMPARE(::ftruncate(m_file->handle(), 4096), 0);
        digests.add(m_bytes.size() - mebibyte);
        QVERIFY_EXCEPTION_THROWN(digests.finish(), Error);
    }

    void whatIsGoneFromAMappedFileIsZerosAndNotSound()
    {
        const MappedRange range({m_file->handle(), 4096 + 1, mebibyte});
        QVERIFY(range.isThere());
        QCOMPARE(range.bytes()[mebibyte - 1], m_bytes.at(4096 + mebibyte));
        QVERIFY(range.isSound());
        QCOMPARE(::ftruncate(m_file->handle(), 0), 0);
        QCOMPARE(QByteArray(range.bytes(), mebibyte), QByteArray(mebibyte, '\0'));
        QVERIFY(!range.isSound());
    }

private:
    QByteArray digestOf(qint64 offset, qint64 length) const
    {
        DigestSet digests(sha1);
        addToDigests({m_file->handle(), offset, length}, digests);
        return digests.finish().value(DigestAlgorithm::Sha1);
    }

    const QByteArray m_bytes = QByteArray("some bytes of a file ").repeated(500 * 1000);
    QScopedPointer<QTemporaryFile> m_file;
};

QTEST_GUILESS_MAIN(tst_ByteRange)
#include "tst_ByteRange.moc"
