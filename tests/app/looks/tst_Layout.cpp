// SPDX-License-Identifier: Apache-2.0
// Runs once for each scale factor, which a process cannot change.
#include "app/ApplicationLook.h"
#include "core/QtCompatibility.h"
#include "resources/Resources.h"
#include "tests/app/GermanTexts.h"
#include "tests/app/looks/Clipping.h"
#include "tests/app/looks/Controls.h"
#include "tests/app/looks/Dialogs.h"
#include "tests/app/looks/PseudoLanguage.h"
#include "tests/app/looks/ShownTexts.h"
#include "tests/app/looks/WindowTour.h"

#include <QtTest>
#include <QtWidgets>

namespace {

/// In which language and direction the windows are looked at.
struct Reading
{
    Reading(bool isLong, bool fromTheRight)
    {
        QApplication::setLayoutDirection(fromTheRight ? Qt::RightToLeft : Qt::LeftToRight);
        if (isLong)
            QCoreApplication::installTranslator(&m_language);
    }
    ~Reading()
    {
        QApplication::setLayoutDirection(Qt::LeftToRight);
        QCoreApplication::removeTranslator(&m_language);
    }
    Q_DISABLE_COPY(Reading)

private:
    PseudoLanguage m_language;
};

QStringList labelled(const QString &label, QStringList complaints)
{
    for (QString &complaint : complaints)
        complaint.prepend(label + QStringLiteral(": "));
    return complaints;
}

QStringList clippedAt(QWidget &window, QSize size)
{
    window.resize(size);
    QTest::qWait(1);
    const QString label = QStringLiteral("%1 x %2").arg(window.width()).arg(window.height());
    return labelled(label, clippedIn(window));
}

/// At the smallest size that the window takes and at one that fills a screen.
QStringList clippedAtAnySize(QWidget &window)
{
    return clippedAt(window, QSize()) + clippedAt(window, {1500, 1100});
}

/// What comes from the product that is configured, or from whoever uses the tool, is not translated.
bool isData(const ShownText &text)
{
    const QWidget *widget = text.widget;
    const QWidget *view = widget->parentWidget();
    return qobject_cast<const QTreeWidget *>(view) || qobject_cast<const QTableView *>(view) ||
           qobject_cast<const QTextEdit *>(view) || widget->parent()->inherits("PXCheckBox") ||
           widget->objectName() == QLatin1String("label_file") ||
           (qobject_cast<const QLineEdit *>(widget) &&
            !qobject_cast<const QLineEdit *>(widget)->text().isEmpty());
}

QStringList untranslatedIn(QWidget &window)
{
    QStringList complaints;
    for (const ShownText &text : shownTextsIn(window)) {
        if (!isData(text) && !text.text.contains(QLatin1Char('[')))
            complaints += QStringLiteral("\"%1\" is not translated").arg(text.text);
    }
    return complaints;
}

QStringList inAnotherFontIn(QWidget &window)
{
    const QString wanted = QFontInfo(QApplication::font()).family();
    QStringList complaints;
    for (const ShownText &text : shownTextsIn(window)) {
        const QString font = QFontInfo(text.widget->font()).family();
        if (font != wanted)
            complaints += QStringLiteral("\"%1\" is in %2").arg(text.text, font);
    }
    return complaints;
}

/// Areas that hide part of what they show to the side. Trees may: their branches are as deep as they are.
QStringList scrolledSidewaysIn(const QWidget &window)
{
    QStringList complaints;
    for (const QAbstractScrollArea *area : window.findChildren<QAbstractScrollArea *>()) {
        const bool isHidden = !area->isVisible() || qobject_cast<const QTreeView *>(area);
        if (!isHidden && area->horizontalScrollBar()->maximum() > 0)
            complaints += callOf(area) + QStringLiteral(" scrolls sideways");
    }
    return complaints;
}

/// Where the widest of what a page shows ends, from the window's left.
int rightEdgeOfContents(const QWidget &window)
{
    int edge = 0;
    const auto *grid = window.findChild<QGridLayout *>(QStringLiteral("gridLayout"));
    const auto *stack = qobject_cast<const QStackedLayout *>(grid->itemAtPosition(1, 1)->layout());
    for (const QWidget *widget : stack->currentWidget()->findChildren<QWidget *>()) {
        const bool isContents = qobject_cast<const QGroupBox *>(widget) ||
                                qobject_cast<const QAbstractItemView *>(widget) ||
                                widget->objectName().startsWith(QLatin1String("widget_"));
        if (isContents && widget->isVisible())
            edge = std::max(edge, widget->mapTo(&window, QPoint(widget->width(), 0)).x());
    }
    return edge;
}

void addReadingRows()
{
    QTest::addColumn<bool>("isLong");
    QTest::addColumn<bool>("fromTheRight");
    QTest::newRow("English") << false << false;
    QTest::newRow("a long language") << true << false;
    QTest::newRow("from right to left") << false << true;
    QTest::newRow("a long language from right to left") << true << true;
}

} // namespace

class tst_Layout : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
        QtCompatibility::useHighDpiPixmaps();
        useApplicationLook();
        // What help says is not looked at here, and its engine takes long to start.
        qputenv("PCT_MODULES", "/nowhere");
    }

    void nothingInTheWindowIsClipped_data() { addReadingRows(); }
    void nothingInTheWindowIsClipped();
    void everyPageFitsBesideItsHelp_data();
    void everyPageFitsBesideItsHelp();
    void everyPageEndsAtTheSameMargin();
    void nothingInTheDialogsIsClipped_data() { addReadingRows(); }
    void nothingInTheDialogsIsClipped();
    void everyTextIsTranslated_data() { addChoiceRows(); }
    void everyTextIsTranslated();
    void everyTextIsInOneFont_data() { addChoiceRows(); }
    void everyTextIsInOneFont();
    void theWindowIsMirroredFromTheRight();
};

void tst_Layout::nothingInTheWindowIsClipped()
{
    QFETCH(bool, isLong);
    QFETCH(bool, fromTheRight);
    const Reading reading(isLong, fromTheRight);
    QStringList complaints;
    for (const PCW_CONFIGTYPE type : {PCW_CONFIG_PACKAGE, PCW_CONFIG_PROFILE}) {
        // The Reader's pages are some of the Editor's.
        WindowTour tour({true, type});
        QVERIFY(tour.open());
        for (const TourStop &stop : tour.stops()) {
            stop.show();
            complaints += labelled(stop.name, clippedAtAnySize(tour.window()));
        }
    }
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

void tst_Layout::everyPageFitsBesideItsHelp_data()
{
    QTest::addColumn<bool>("isGerman");
    QTest::addColumn<Choice>("choice");
    for (const bool isGerman : {false, true}) {
        for (const PCW_CONFIGTYPE type : {PCW_CONFIG_PACKAGE, PCW_CONFIG_PROFILE})
            QTest::addRow("%s %s", isGerman ? "German" : "English",
                          type == PCW_CONFIG_PACKAGE ? "package" : "profile")
                << isGerman << Choice{true, type};
    }
}

void tst_Layout::everyPageFitsBesideItsHelp()
{
    QFETCH(bool, isGerman);
    QFETCH(Choice, choice);
    const auto german = isGerman ? std::make_unique<GermanTexts>() : nullptr;
    WindowTour tour(choice);
    QVERIFY(tour.open());
    DlgCustomizationTool_v2 &window = tour.window();
    QCOMPARE(window.size(), QSize(1000, 680));
    tour.tool("tb_info")->click();
    QStringList complaints;
    for (const TourStop &stop : tour.stops()) {
        stop.show();
        for (const QSize size : {QSize(1000, 680), QSize()}) {
            complaints += labelled(stop.name, clippedAt(window, size));
            complaints += labelled(stop.name, scrolledSidewaysIn(window));
        }
        if (window.width() > 1000)
            complaints += QStringLiteral("%1 needs %2").arg(stop.name).arg(window.width());
        const int help = window.Splitter()->sizes().last();
        if (help < 240)
            complaints += QStringLiteral("%1 leaves %2 for help").arg(stop.name).arg(help);
    }
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

void tst_Layout::everyPageEndsAtTheSameMargin()
{
    QSet<int> edges;
    QStringList described;
    for (const PCW_CONFIGTYPE type : {PCW_CONFIG_PACKAGE, PCW_CONFIG_PROFILE}) {
        WindowTour tour({true, type});
        QVERIFY(tour.open());
        for (const TourStop &stop : tour.stops()) {
            stop.show();
            QTest::qWait(1);
            const int edge = rightEdgeOfContents(tour.window());
            // The first page of packages has nothing that goes from edge to edge.
            if (edge > 0)
                edges += edge;
            described += QStringLiteral("%1: %2").arg(stop.name).arg(edge);
        }
    }
    QVERIFY2(edges.size() == 1, qPrintable(described.join(QLatin1Char('\n'))));
}

void tst_Layout::nothingInTheDialogsIsClipped()
{
    QFETCH(bool, isLong);
    QFETCH(bool, fromTheRight);
    const Reading reading(isLong, fromTheRight);
    const QTemporaryDir folder;
    QStringList complaints;
    for (const DialogKind &kind : everyDialog(folder.path())) {
        const std::unique_ptr<QDialog> dialog = kind.make();
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        complaints += labelled(kind.name, clippedIn(*dialog));
    }
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

void tst_Layout::everyTextIsTranslated()
{
    QFETCH(Choice, choice);
    const Reading reading(true, false);
    WindowTour tour(choice);
    QVERIFY(tour.open());
    QStringList complaints;
    for (const TourStop &stop : tour.stops()) {
        stop.show();
        complaints += labelled(stop.name, untranslatedIn(tour.window()));
    }
    for (const char *dialog : {"chooser", "about", "identifier-question"}) {
        const std::unique_ptr<QDialog> shown = makeDialog(QLatin1String(dialog), QString());
        shown->show();
        complaints += labelled(QLatin1String(dialog), untranslatedIn(*shown));
    }
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

void tst_Layout::everyTextIsInOneFont()
{
    QFETCH(Choice, choice);
    WindowTour tour(choice);
    QVERIFY(tour.open());
    QStringList complaints;
    for (const TourStop &stop : tour.stops()) {
        stop.show();
        complaints += labelled(stop.name, inAnotherFontIn(tour.window()));
    }
    QCOMPARE(complaints.join(QLatin1Char('\n')), QString());
}

void tst_Layout::theWindowIsMirroredFromTheRight()
{
    const Reading reading(false, true);
    WindowTour tour({});
    QVERIFY(tour.open());
    const DlgCustomizationTool_v2 &window = tour.window();
    const auto leftOf = [&window](const QWidget *widget) { return widget->mapTo(&window, QPoint()).x(); };
    const QWidget *column = window.findChild<QWidget *>(QStringLiteral("widget_category"));
    QCOMPARE(leftOf(column) + column->width(), window.width());
    QVERIFY(leftOf(tour.tool("tb_open")) > leftOf(tour.tool("tb_save")));
    QVERIFY(leftOf(tour.tool("tb_save")) > leftOf(tour.tool("tb_info")));
}

QTEST_MAIN(tst_Layout)
#include "tst_Layout.moc"
