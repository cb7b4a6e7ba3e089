// SPDX-License-Identifier: Apache-2.0
#include "welcome/DroppedFiles.h"

#include <QMimeData>
#include <QtTest>
#include <QUrl>

class tst_DroppedFiles : public QObject
{
    Q_OBJECT

private slots:
    void suffixIsWhatFollowsTheLastDotWithItsCase_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("taken");
        QTest::newRow("plain") << QStringLiteral("/d/a.mobileconfig") << true;
        QTest::newRow("two dots") << QStringLiteral("/d/a.xml.mobileconfig") << true;
        QTest::newRow("blanks and per cent") << QStringLiteral("/d/50%20 ä.mobileconfig") << true;
        QTest::newRow("upper case") << QStringLiteral("/d/Profile.MOBILECONFIG") << false;
        QTest::newRow("followed by more") << QStringLiteral("/d/a.mobileconfig.bak") << false;
        QTest::newRow("in the folder's name") << QStringLiteral("/d.mobileconfig/a") << false;
        QTest::newRow("the name without a dot") << QStringLiteral("/d/mobileconfig") << false;
    }

    void suffixIsWhatFollowsTheLastDotWithItsCase()
    {
        QFETCH(QString, file);
        QFETCH(bool, taken);
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file)});
        QCOMPARE(DroppedFiles::firstWithSuffix(&data, QStringLiteral("mobileconfig")),
                 taken ? file : QString());
    }

    void theFirstMatchingFileIsTaken()
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QStringLiteral("/d/b.txt")),
                      QUrl::fromLocalFile(QStringLiteral("/d/a.xml")),
                      QUrl::fromLocalFile(QStringLiteral("/d/c.xml"))});
        QCOMPARE(DroppedFiles::firstWithSuffix(&data, QStringLiteral("xml")), QStringLiteral("/d/a.xml"));
    }

    void aRemoteFileIsNoLocalFile()
    {
        QMimeData data;
        data.setUrls({QUrl(QStringLiteral("https://pelix.example/a.xml"))});
        QCOMPARE(DroppedFiles::firstWithSuffix(&data, QStringLiteral("xml")), QString());
        QCOMPARE(DroppedFiles::paths(&data), QStringList{QString()});
    }

    void textIsNoFile()
    {
        QMimeData data;
        data.setText(QStringLiteral("/d/a.xml"));
        QCOMPARE(DroppedFiles::firstWithSuffix(&data, QStringLiteral("xml")), QString());
        QCOMPARE(DroppedFiles::paths(&data), QStringList());
    }
};

QTEST_GUILESS_MAIN(tst_DroppedFiles)
#include "tst_DroppedFiles.moc"
