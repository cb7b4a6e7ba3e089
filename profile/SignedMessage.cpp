// SPDX-License-Identifier: Apache-2.0
#include "profile/SignedMessage.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace {

CommandResult decode(const QString &path, const QStringList &options, int outputLimit)
{
    // The command would take a name that starts with a dash for an option.
    return Command::run(QStringLiteral("/usr/bin/security"),
                        QStringList{QStringLiteral("cms"), QStringLiteral("-D")} + options +
                            QStringList{QStringLiteral("-i"), QFileInfo(path).absoluteFilePath()},
                        -1, outputLimit);
}

QString markOf(int signer)
{
    return QStringLiteral("signer%1.id=\"").arg(signer);
}

/// The headers describe each signer like `signer0.id="Jane Doe"; signer0.status=GoodSignature; `. A name
/// stands there as it is, so it may look like another signer; then it is not clear who signed, and the list
/// is empty.
QStringList descriptionsIn(const QString &headers, int signers)
{
    QStringList descriptions;
    QString rest = headers.section(markOf(0), 1);
    for (int next = 1; next < signers; ++next) {
        const QStringList parts = rest.split(markOf(next));
        if (parts.size() != 2)
            return {};
        descriptions << parts.first();
        rest = parts.last();
    }
    return descriptions << rest;
}

ProfileSigner describedSigner(const QString &description, int number)
{
    static const QRegularExpression word(QStringLiteral("^\\w+"));
    const QString separator = QStringLiteral("\"; signer%1.status=").arg(number);
    const auto end = description.lastIndexOf(separator);
    ProfileSigner signer;
    signer.name = description.left(end);
    signer.status = end < 0 ? QString() : word.match(description.mid(end + separator.size())).captured();
    signer.isKnown = signer.status == QLatin1String("GoodSignature");
    return signer;
}

QString headersOf(const QString &path)
{
    const QByteArray output =
        decode(path, {QStringLiteral("-h"), QStringLiteral("1"), QStringLiteral("-n")}, Command::mebibyte)
            .standardOutput;
    return QString::fromUtf8(output.constData(), output.size());
}

} // namespace

bool SignedMessage::isOne(const QByteArray &bytes)
{
    // One ASN.1 sequence, too long for a length in one byte.
    return bytes.size() > 1 && bytes.at(0) == '\x30' && (bytes.at(1) & 0x80) != 0;
}

CommandResult SignedMessage::decoded(const QString &path, int outputLimit)
{
    return decode(path, {}, outputLimit);
}

QList<ProfileSigner> SignedMessage::signersOf(const QString &path)
{
    static const QRegularExpression count(QStringLiteral("nsigners=(\\d{1,2});"));
    const QString headers = headersOf(path);
    const int signers = count.match(headers).captured(1).toInt();
    QList<ProfileSigner> result;
    if (signers == 0)
        return result;
    const QStringList descriptions = descriptionsIn(headers, signers);
    for (int i = 0; i < descriptions.size(); ++i)
        result << describedSigner(descriptions.at(i), i);
    return result;
}
