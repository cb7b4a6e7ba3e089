// SPDX-License-Identifier: Apache-2.0
#include "app/ApplicationLook.h"
#include "app/CPDF_Waiting.h"
#include "app/ToolBarLook.h"
#include "resources/Resources.h"
#include "tests/support/TestFiles.h"

#include <QDirIterator>
#include <QMovie>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString sources = QStringLiteral(PCT_SOURCES);

QString doubled(QString image)
{
    return image.insert(image.lastIndexOf(QLatin1Char('.')), QLatin1String("@2x"));
}

bool isRead(const QString &file)
{
    return file.endsWith(QLatin1String(".cpp")) || file.endsWith(QLatin1String(".ui"));
}

/// The images that the sources and forms name, as ":/folder/name.suffix".
QStringList namedImages()
{
    static const QRegularExpression name(QStringLiteral(":/[A-Za-z0-9_/@-]+\\.(png|gif)"));
    QSet<QString> images;
    for (const char *folder : {"/app", "/pages", "/welcome", "/profile"}) {
        QDirIterator files(sources + QLatin1String(folder), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            const QString text = isRead(file) ? QString::fromUtf8(TestFiles::read(file)) : QString();
            for (auto matches = name.globalMatch(text); matches.hasNext();)
                images += matches.next().captured();
        }
    }
    QStringList sorted = images.values();
    sorted.sort();
    return sorted;
}

/// The images that a style sheet of the toolbar names.
QStringList imagesOf(const QString &sheet)
{
    static const QRegularExpression address(QStringLiteral("url\\((:/[^)]*)\\)"));
    QStringList images;
    for (auto matches = address.globalMatch(sheet); matches.hasNext();)
        images += matches.next().captured(1);
    return images;
}

bool isPair(const QString &image)
{
    const QImage single(image);
    const QImage twice(doubled(image));
    return !single.isNull() && twice.size() == single.size() * 2;
}

} // namespace

class tst_Artwork : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }

    void everyImageIsThereInBothSizes();
    void everyImageOfTheToolbarIsThereInBothSizes_data();
    void everyImageOfTheToolbarIsThereInBothSizes();
    void everyDrawnImageIsInTheCollection();
    void theWaitingImagesMove_data();
    void theWaitingImagesMove();
    void theApplicationHasItsIconInEverySize();
    void aChangedDrawingOrImageIsNoticed_data();
    void aChangedDrawingOrImageIsNoticed();
};

void tst_Artwork::everyImageIsThereInBothSizes()
{
    const QStringList images = namedImages();
    QVERIFY(images.size() > 10);
    for (const QString &image : images) {
        if (!image.contains(QLatin1String("@2x")))
            QVERIFY2(isPair(image), qPrintable(image));
    }
}

void tst_Artwork::everyImageOfTheToolbarIsThereInBothSizes_data()
{
    QTest::addColumn<QString>("sheet");
    for (const char *image : {"open", "open2", "save", "about"})
        QTest::newRow(image) << ToolBarLook::toolButtonSheet(QLatin1String(image));
    QTest::newRow("info") << ToolBarLook::checkableToolButtonSheet(QStringLiteral("info"));
}

void tst_Artwork::everyImageOfTheToolbarIsThereInBothSizes()
{
    QFETCH(QString, sheet);
    const QStringList images = imagesOf(sheet);
    QVERIFY(images.size() >= 3);
    for (const QString &image : images)
        QVERIFY2(isPair(image), qPrintable(image));
}

void tst_Artwork::everyDrawnImageIsInTheCollection()
{
    QDirIterator images(sources + QStringLiteral("/resources/img"), QDir::Files);
    QVERIFY(images.hasNext());
    while (images.hasNext()) {
        images.next();
        QVERIFY2(QFile::exists(QStringLiteral(":/img/") + images.fileName()), qPrintable(images.fileName()));
    }
}

void tst_Artwork::theWaitingImagesMove_data()
{
    QTest::addColumn<QString>("image");
    QTest::newRow("single") << QStringLiteral(":/img/waiting.gif");
    QTest::newRow("double") << QStringLiteral(":/img/waiting@2x.gif");
}

void tst_Artwork::theWaitingImagesMove()
{
    QFETCH(QString, image);
    QMovie movie(image);
    QVERIFY(movie.isValid());
    QVERIFY(movie.frameCount() > 1);
    QVERIFY(movie.jumpToFrame(0));
    const QImage first = movie.currentImage();
    QVERIFY(movie.jumpToFrame(1));
    QVERIFY(movie.currentImage() != first);
}

void tst_Artwork::theApplicationHasItsIconInEverySize()
{
    useApplicationLook();
    const QIcon icon = QApplication::windowIcon();
    for (const int size : {16, 32, 48, 64, 128, 256, 512, 1024}) {
        QVERIFY2(icon.availableSizes().contains(QSize(size, size)), qPrintable(QString::number(size)));
        QCOMPARE(icon.pixmap(size).toImage().size(), QSize(size, size));
    }
}

void tst_Artwork::aChangedDrawingOrImageIsNoticed_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("status");
    QTest::newRow("nothing") << QString() << 0;
    QTest::newRow("a drawing") << QStringLiteral("resources/artwork/pkg.svg") << 1;
    QTest::newRow("the style of a state") << QStringLiteral("resources/artwork/states/hover.css") << 1;
    QTest::newRow("an image") << QStringLiteral("resources/img/pkg@2x.png") << 1;
    QTest::newRow("an icon") << QStringLiteral("resources/artwork/icons/app-icon-48.png") << 1;
}

void tst_Artwork::aChangedDrawingOrImageIsNoticed()
{
    QFETCH(QString, file);
    QFETCH(int, status);
    const QTemporaryDir copy;
    for (const char *folder : {"/resources", "/scripts"})
        QCOMPARE(QProcess::execute(QStringLiteral("cp"),
                                   {QStringLiteral("-r"), sources + QLatin1String(folder), copy.path()}),
                 0);
    if (!file.isEmpty())
        TestFiles::write(copy.filePath(file), TestFiles::read(copy.filePath(file)) + '\n');
    QProcess check;
    check.start(copy.filePath(QStringLiteral("scripts/render-artwork.sh")), {QStringLiteral("--check")});
    QVERIFY(check.waitForFinished());
    QCOMPARE(check.exitCode(), status);
    QVERIFY(check.readAllStandardError().contains(file.toUtf8()));
}

QTEST_MAIN(tst_Artwork)
#include "tst_Artwork.moc"
