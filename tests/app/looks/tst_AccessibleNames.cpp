// SPDX-License-Identifier: Apache-2.0
#include "app/ApplicationLook.h"
#include "resources/Resources.h"
#include "tests/app/looks/Controls.h"
#include "tests/app/looks/Dialogs.h"
#include "tests/app/looks/WindowTour.h"

#include <QAccessible>
#include <QtTest>
#include <QtWidgets>

namespace {

QString nameOf(QWidget *widget)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
    return interface ? interface->text(QAccessible::Name) : QString();
}

QStringList namelessIn(const QWidget &window)
{
    QStringList complaints;
    for (QWidget *control : controlsIn(window)) {
        if (nameOf(control).trimmed().isEmpty())
            complaints += callOf(control) + QStringLiteral(" has no name");
    }
    return complaints;
}

/// A label that ends in a colon names what stands beside it.
QStringList labelsWithoutBuddyIn(const QWidget &window)
{
    QStringList complaints;
    for (const QLabel *label : window.findChildren<QLabel *>()) {
        if (label->isVisible() && label->text().endsWith(QLatin1Char(':')) && !label->buddy())
            complaints += callOf(label) + QStringLiteral(" belongs to nothing");
    }
    return complaints;
}

/// Pictures with a meaning, which they tell in their tool tip.
QStringList speechlessPicturesIn(const QWidget &window)
{
    QStringList complaints;
    for (QLabel *label : window.findChildren<QLabel *>()) {
        const bool speaks = !nameOf(label).isEmpty() && !label->accessibleDescription().isEmpty();
        if (label->isVisible() && label->text().isEmpty() && !label->toolTip().isEmpty() && !speaks)
            complaints += callOf(label) + QStringLiteral(" says nothing");
    }
    return complaints;
}

QStringList complaintsAbout(const QWidget &window)
{
    return namelessIn(window) + labelsWithoutBuddyIn(window) + speechlessPicturesIn(window);
}

} // namespace

class tst_AccessibleNames : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
        useApplicationLook();
    }

    void everythingInTheWindowHasAName_data() { addChoiceRows(); }
    void everythingInTheWindowHasAName()
    {
        QFETCH(Choice, choice);
        WindowTour tour(choice);
        QVERIFY(tour.open());
        for (const TourStop &stop : tour.stops()) {
            stop.show();
            QVERIFY2(!controlsIn(tour.window()).isEmpty(), qPrintable(stop.name));
            const QString complaints = complaintsAbout(tour.window()).join(QLatin1Char('\n'));
            QVERIFY2(complaints.isEmpty(), qPrintable(stop.name + QStringLiteral(": ") + complaints));
        }
    }

    void everythingInTheDialogsHasAName()
    {
        const QTemporaryDir folder;
        for (const DialogKind &kind : everyDialog(folder.path())) {
            const std::unique_ptr<QDialog> dialog = kind.make();
            dialog->show();
            QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
            const QString complaints = complaintsAbout(*dialog).join(QLatin1Char('\n'));
            QVERIFY2(complaints.isEmpty(), qPrintable(kind.name + QStringLiteral(": ") + complaints));
        }
    }

    void aButtonWithoutTextSaysWhatItIsFor_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("name");
        QTest::newRow("open") << QStringLiteral("tb_open") << QStringLiteral("Open");
        QTest::newRow("save") << QStringLiteral("tb_save") << QStringLiteral("Save");
        QTest::newRow("information") << QStringLiteral("tb_info") << QStringLiteral("Information");
        QTest::newRow("about") << QStringLiteral("tb_about") << QStringLiteral("About");
    }

    void aButtonWithoutTextSaysWhatItIsFor()
    {
        QFETCH(QString, button);
        WindowTour tour({});
        QVERIFY(tour.open());
        QTEST(nameOf(tour.tool(button.toLatin1().constData())), "name");
    }
};

QTEST_MAIN(tst_AccessibleNames)
#include "tst_AccessibleNames.moc"
