// SPDX-License-Identifier: Apache-2.0
// Runs on a screen with two pixels to the point.
#include "app/ApplicationLook.h"
#include "core/QtCompatibility.h"
#include "resources/Resources.h"
#include "tests/app/looks/Controls.h"
#include "tests/app/looks/Dialogs.h"
#include "tests/app/looks/WindowTour.h"

#include <QRegularExpression>
#include <QtTest>
#include <QtWidgets>

#include <algorithm>
#include <limits>

namespace {

QString doubled(QString image)
{
    return image.insert(image.lastIndexOf(QLatin1Char('.')), QLatin1String("@2x"));
}

/// A widget's own style sheet, or what the one of its window says of it by name.
QString sheetOf(const QWidget &widget)
{
    const QString name = QLatin1Char('#') + widget.objectName();
    return widget.styleSheet().isEmpty()
               ? widget.window()->styleSheet().section(name, 1).section(QLatin1Char('}'), 0, 0)
               : widget.styleSheet();
}

/// The image that a widget's own style sheet gives it in its present state; empty when there is none.
QString imageInSheetOf(const QWidget &widget)
{
    static const QRegularExpression address(QStringLiteral("image: url\\((:/[^)]*)\\)"));
    const QRegularExpressionMatch match = address.match(sheetOf(widget));
    const auto *button = qobject_cast<const QAbstractButton *>(&widget);
    const bool isOtherState = button && (button->isChecked() || !button->isEnabled());
    return isOtherState ? QString() : match.captured(1);
}

/// How far a part of a picture, which begins at a corner, is from an image on the picture's background.
qint64 distance(const QImage &picture, QPoint corner, const QImage &image)
{
    QImage wanted(image.size(), QImage::Format_RGB32);
    wanted.fill(picture.pixel(0, 0));
    QPainter(&wanted).drawImage(0, 0, image);
    const QImage shown = picture.copy(QRect(corner, image.size()));
    qint64 sum = 0;
    for (int y = 0; y < wanted.height(); ++y) {
        for (int x = 0; x < wanted.width(); ++x)
            sum += qAbs(qGray(wanted.pixel(x, y)) - qGray(shown.pixel(x, y)));
    }
    return sum;
}

/// The same for an image in the picture's middle, which half a point may have moved.
qint64 distanceInTheMiddle(const QImage &picture, const QImage &image)
{
    const QPoint corner = picture.rect().center() - image.rect().center();
    qint64 least = std::numeric_limits<qint64>::max();
    for (int y = -1; y <= 1; ++y) {
        for (int x = -1; x <= 1; ++x)
            least = std::min(least, distance(picture, corner + QPoint(x, y), image));
    }
    return least;
}

/// Whether a widget shows the doubled image rather than the single one blown up.
bool isShownSharp(QWidget &widget, const QString &image)
{
    QImage shown(widget.size() * 2, QImage::Format_RGB32);
    shown.setDevicePixelRatio(2);
    shown.fill(Qt::white);
    widget.render(&shown, QPoint(), QRegion(), QWidget::DrawChildren);
    shown.setDevicePixelRatio(1);
    QImage sharp(doubled(image));
    sharp.setDevicePixelRatio(1);
    const QImage blurred =
        QImage(image).scaled(sharp.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return distanceInTheMiddle(shown, sharp) * 3 < distanceInTheMiddle(shown, blurred);
}

bool isSharp(const QPixmap &pixmap)
{
    return pixmap.isNull() || pixmap.devicePixelRatio() >= 2;
}

QPixmap pixmapOf(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return label->property("pixmap").value<QPixmap>();
    const auto *button = qobject_cast<const QAbstractButton *>(&widget);
    return button ? button->icon().pixmap(button->iconSize()) : QPixmap();
}

QStringList blurredIn(QWidget &window, int *found)
{
    QStringList complaints;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->visibleRegion().isEmpty())
            continue;
        const QString image = imageInSheetOf(*widget);
        const QPixmap pixmap = pixmapOf(*widget);
        *found += !image.isEmpty() || !pixmap.isNull();
        if (!isSharp(pixmap) || (!image.isEmpty() && !isShownSharp(*widget, image)))
            complaints += callOf(widget) + QStringLiteral(" shows a blurred ") + image;
    }
    return complaints;
}

} // namespace

class tst_SharpImages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
        QtCompatibility::useHighDpiPixmaps();
        useApplicationLook();
        QCOMPARE(qApp->devicePixelRatio(), 2.0);
    }

    void everyImageInTheWindowIsSharp_data() { addChoiceRows(); }
    void everyImageInTheWindowIsSharp()
    {
        QFETCH(Choice, choice);
        WindowTour tour(choice);
        QVERIFY(tour.open());
        for (const TourStop &stop : tour.stops()) {
            stop.show();
            int found = 0;
            const QString complaints = blurredIn(tour.window(), &found).join(QLatin1Char('\n'));
            QVERIFY2(complaints.isEmpty(), qPrintable(stop.name + QStringLiteral(": ") + complaints));
            QVERIFY2(found >= 6, qPrintable(stop.name));
        }
    }

    void everyImageInTheDialogsIsSharp_data()
    {
        QTest::addColumn<int>("images");
        QTest::newRow("chooser") << 1;
        QTest::newRow("about") << 2;
        QTest::newRow("signing") << 1;
        QTest::newRow("package-signing") << 1;
    }

    void everyImageInTheDialogsIsSharp()
    {
        QFETCH(int, images);
        const std::unique_ptr<QDialog> dialog = makeDialog(QLatin1String(QTest::currentDataTag()), QString());
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        int found = 0;
        QCOMPARE(blurredIn(*dialog, &found).join(QLatin1Char('\n')), QString());
        QCOMPARE(found, images);
    }
};

int main(int argc, char *argv[])
{
    qputenv("QT_SCALE_FACTOR", "2");
    QApplication application(argc, argv);
    tst_SharpImages test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_SharpImages.moc"
