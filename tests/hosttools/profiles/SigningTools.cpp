// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/profiles/SigningTools.h"

#include "tests/support/TestFiles.h"

namespace SigningTools {

void makeIdentity(const QString &name, const QString &output, const QStringList &options)
{
    TestFiles::outputOf(QStringLiteral(PCT_MAKE_IDENTITY),
                        QStringList({QStringLiteral("--name"), name, QStringLiteral("--output"), output}) +
                            options);
}

void signWithOpenSsl(const QString &input, const QString &identity, const QString &output,
                     const QStringList &options)
{
    const QStringList command = {QStringLiteral("cms"),      QStringLiteral("-sign"),
                                 QStringLiteral("-binary"),  QStringLiteral("-nodetach"),
                                 QStringLiteral("-outform"), QStringLiteral("DER"),
                                 QStringLiteral("-signer"),  identity,
                                 QStringLiteral("-in"),      input,
                                 QStringLiteral("-out"),     output};
    TestFiles::outputOf(QStringLiteral("openssl"), command + options);
}

QByteArray contentByOpenSsl(const QString &path)
{
    return TestFiles::outputOf(QStringLiteral("openssl"),
                               {QStringLiteral("cms"), QStringLiteral("-verify"), QStringLiteral("-noverify"),
                                QStringLiteral("-binary"), QStringLiteral("-inform"), QStringLiteral("DER"),
                                QStringLiteral("-in"), path});
}

} // namespace SigningTools
