// SPDX-License-Identifier: Apache-2.0
#include "profile/CProfileGenerator.h"

#include <QSysInfo>
#include <QtTest>

class tst_PayloadIdentifier : public QObject
{
    Q_OBJECT

private slots:
    void isTheHostNameADotAndAVersion4Uuid()
    {
        QString uuid;
        const QString identifier = CProfileGenerator::GenPayloadIdentifier(&uuid);
        static const QRegularExpression version4(
            QStringLiteral("\\A[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\z"));
        QVERIFY2(version4.match(uuid).hasMatch(), qPrintable(uuid));
        QVERIFY(identifier.endsWith(QLatin1Char('.') + uuid));
        const QString host = identifier.left(identifier.size() - uuid.size() - 1);
        QVERIFY(!host.isEmpty() && !host.contains(QLatin1Char('.')));
        QVERIFY(QSysInfo::machineHostName().startsWith(host));
    }

    void isNewEveryTime()
    {
        QVERIFY(CProfileGenerator::GenPayloadIdentifier(nullptr) !=
                CProfileGenerator::GenPayloadIdentifier(nullptr));
    }
};

QTEST_GUILESS_MAIN(tst_PayloadIdentifier)
#include "tst_PayloadIdentifier.moc"
