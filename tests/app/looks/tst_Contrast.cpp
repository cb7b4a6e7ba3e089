// SPDX-License-Identifier: Apache-2.0
#include "app/ApplicationLook.h"
#include "resources/Resources.h"
#include "tests/app/looks/Contrast.h"
#include "tests/app/looks/Controls.h"
#include "tests/app/looks/Dialogs.h"
#include "tests/app/looks/ShownTexts.h"
#include "tests/app/looks/WindowTour.h"

#include <QtTest>
#include <QtWidgets>

// The ratios that the web's accessibility guidelines ask for on level AA.
namespace {

constexpr double ofText = 4.5;
constexpr double ofLargeText = 3.0;
constexpr double ofControls = 3.0;
constexpr int largeTextHeight = 24;     // pixels
constexpr int largeBoldTextHeight = 18; // pixels, rounded down
constexpr int lineOfTextHeight = 6;     // pixels; what is lower is a border

double wantedOf(const QWidget &widget)
{
    const QFontInfo font(widget.font());
    const bool large =
        font.pixelSize() >= largeTextHeight || (font.bold() && font.pixelSize() > largeBoldTextHeight);
    return large ? ofLargeText : ofText;
}

QRect inPixels(const QRect &rect, const QImage &picture)
{
    const qreal ratio = picture.devicePixelRatio();
    return {(QPointF(rect.topLeft()) * ratio).toPoint(), rect.size() * ratio};
}

QStringList faintLinesOf(const ShownText &text, const QWidget &window, const QImage &picture)
{
    QStringList complaints;
    for (const InkedLine &line : inkedLinesIn(picture, inPixels(seenPartOf(text, window), picture))) {
        if (line.height >= lineOfTextHeight * picture.devicePixelRatio() &&
            line.contrast < wantedOf(*text.widget))
            complaints += QStringLiteral("%1 \"%2\" has a contrast of %3")
                              .arg(callOf(text.widget), text.text.left(40))
                              .arg(line.contrast, 0, 'f', 2);
    }
    return complaints;
}

QStringList faintTextsIn(QWidget &window)
{
    QTest::qWait(1);
    const QImage picture = window.grab().toImage();
    QStringList complaints;
    for (const ShownText &text : shownTextsIn(window)) {
        // What cannot be used may be faint.
        if (text.widget->isEnabled())
            complaints += faintLinesOf(text, window, picture);
    }
    return complaints;
}

/// The box or circle of a button that can be ticked.
QRect indicatorOf(const QAbstractButton &button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    const bool radio = qobject_cast<const QRadioButton *>(&button);
    return button.style()->subElementRect(
        radio ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator, &option, &button);
}

/// What of a control shows that it is there, beside its text; empty when its text is enough.
QRect bodyOf(const QWidget &control)
{
    if (qobject_cast<const QCheckBox *>(&control) || qobject_cast<const QRadioButton *>(&control))
        return indicatorOf(*qobject_cast<const QAbstractButton *>(&control));
    const auto *tool = qobject_cast<const QToolButton *>(&control);
    const bool isPicture = tool && tool->text().isEmpty();
    return isPicture || qobject_cast<const QLineEdit *>(&control) ? control.rect() : QRect();
}

QStringList faintControlsIn(QWidget &window)
{
    const QImage picture = window.grab().toImage();
    QStringList complaints;
    for (QWidget *control : controlsIn(window)) {
        const QRect seen = seenPartOf({control, {}, bodyOf(*control)}, window);
        double contrast = 0;
        for (const InkedLine &line : inkedLinesIn(picture, inPixels(seen, picture)))
            contrast = std::max(contrast, line.contrast);
        if (control->isEnabled() && !seen.isEmpty() && contrast < ofControls)
            complaints += QStringLiteral("%1 has a contrast of %2").arg(callOf(control)).arg(contrast);
    }
    return complaints;
}

QPalette darkPalette()
{
    QPalette palette(QColor(0x2D, 0x2D, 0x30), QColor(0x1E, 0x1E, 0x1E));
    palette.setColor(QPalette::Base, QColor(0x10, 0x10, 0x10));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, QColor(0xF0, 0xF0, 0xF0));
    return palette;
}

QPalette lightPalette()
{
    return QPalette(QColor(0xEF, 0xEF, 0xEF), QColor(0xEF, 0xEF, 0xEF));
}

void startOn(bool darkSystem)
{
    QApplication::setPalette(darkSystem ? darkPalette() : lightPalette());
    useApplicationLook();
}

} // namespace

class tst_Contrast : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    }

    void theRatioIsThatOfTheGuidelines();
    void everythingInTheWindowCanBeRead_data();
    void everythingInTheWindowCanBeRead();
    void everythingInTheDialogsCanBeRead_data();
    void everythingInTheDialogsCanBeRead();
};

void tst_Contrast::theRatioIsThatOfTheGuidelines()
{
    QCOMPARE(contrastOf(qRgb(0, 0, 0), qRgb(255, 255, 255)), 21.0);
    QCOMPARE(contrastOf(qRgb(9, 9, 9), qRgb(9, 9, 9)), 1.0);
    QVERIFY(qAbs(contrastOf(qRgb(0x77, 0x77, 0x77), qRgb(255, 255, 255)) - 4.48) < 0.01);
}

void tst_Contrast::everythingInTheWindowCanBeRead_data()
{
    QTest::addColumn<Choice>("choice");
    QTest::addColumn<bool>("darkSystem");
    for (const bool dark : {false, true}) {
        for (const bool editor : {true, false}) {
            for (const PCW_CONFIGTYPE type : {PCW_CONFIG_PACKAGE, PCW_CONFIG_PROFILE})
                QTest::addRow("%s %s on a %s system", editor ? "Editor" : "Reader",
                              type == PCW_CONFIG_PACKAGE ? "package" : "profile", dark ? "dark" : "light")
                    << Choice{editor, type} << dark;
        }
    }
}

void tst_Contrast::everythingInTheWindowCanBeRead()
{
    QFETCH(Choice, choice);
    QFETCH(bool, darkSystem);
    startOn(darkSystem);
    WindowTour tour(choice);
    QVERIFY(tour.open());
    QStringList complaints;
    for (const TourStop &stop : tour.stops()) {
        stop.show();
        for (const QString &complaint : faintTextsIn(tour.window()) + faintControlsIn(tour.window()))
            complaints += stop.name + QStringLiteral(": ") + complaint;
    }
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

void tst_Contrast::everythingInTheDialogsCanBeRead_data()
{
    QTest::addColumn<bool>("darkSystem");
    QTest::newRow("light system") << false;
    QTest::newRow("dark system") << true;
}

void tst_Contrast::everythingInTheDialogsCanBeRead()
{
    QFETCH(bool, darkSystem);
    startOn(darkSystem);
    const QTemporaryDir folder;
    QStringList complaints;
    for (const DialogKind &kind : everyDialog(folder.path())) {
        const std::unique_ptr<QDialog> dialog = kind.make();
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        for (const QString &complaint : faintTextsIn(*dialog) + faintControlsIn(*dialog))
            complaints += kind.name + QStringLiteral(": ") + complaint;
    }
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

QTEST_MAIN(tst_Contrast)
#include "tst_Contrast.moc"
