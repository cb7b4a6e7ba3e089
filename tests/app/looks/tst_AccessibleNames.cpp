// SPDX-License-Identifier: Apache-2.0
#include "app/ApplicationLook.h"
#include "resources/Resources.h"
#include "tests/app/looks/Controls.h"
#include "tests/app/looks/Dialogs.h"
#include "tests/app/looks/WindowTour.h"

#include <QAccessible>
#include <QtTest>
#include <QtWidgets>

#include <functional>

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

/// Visits what a screen reader can reach, from the window down.
void visitAccessible(QAccessibleInterface *node, const std::function<void(QAccessibleInterface &)> &visit)
{
    if (!node || node->state().invisible)
        return;
    visit(*node);
    for (int i = 0; i < node->childCount(); ++i)
        visitAccessible(node->child(i), visit);
}

QString stateTold(const QAccessibleInterface &node)
{
    return node.state().checked ? QStringLiteral("checked") : QStringLiteral("not checked");
}

/// What a control says of itself against what it shows.
QString falseWordOf(QAccessibleInterface &node)
{
    const QString name = node.text(QAccessible::Name);
    if (node.state().focusable && name.trimmed().isEmpty())
        return QStringLiteral("something that takes the focus has no name");
    const auto *button = qobject_cast<const QAbstractButton *>(node.object());
    if (button && button->isCheckable() && node.state().checked != button->isChecked())
        return QStringLiteral("%1 is told to be %2").arg(name, stateTold(node));
    const auto *list = qobject_cast<const QComboBox *>(node.object());
    if (list && list->currentIndex() >= 0 && node.text(QAccessible::Value) != list->currentText())
        return QStringLiteral("%1 is told to be %2").arg(name, node.text(QAccessible::Value));
    return {};
}

/// The same of the rows of trees and tables.
QStringList falseRowsIn(const QTreeWidget &tree)
{
    QStringList complaints;
    QAccessibleInterface *told = QAccessible::queryAccessibleInterface(const_cast<QTreeWidget *>(&tree));
    QTreeWidgetItemIterator item(const_cast<QTreeWidget *>(&tree), QTreeWidgetItemIterator::NotHidden);
    for (int row = 0; row < told->tableInterface()->rowCount(); ++row) {
        QAccessibleInterface *cell = told->tableInterface()->cellAt(row, 0);
        const QModelIndex index =
            tree.indexAt(cell->rect().center() - tree.viewport()->mapToGlobal(QPoint()));
        if (!index.isValid())
            continue;
        const auto state = static_cast<Qt::CheckState>(index.data(Qt::CheckStateRole).toInt());
        const QString spoken = cell->text(QAccessible::Description);
        const bool isTold =
            state == Qt::Unchecked ? spoken.isEmpty() : spoken.startsWith(QLatin1String("hidden"));
        if (cell->text(QAccessible::Name) != index.data().toString() || !isTold ||
            cell->state().checked != (state == Qt::Checked))
            complaints += index.data().toString() + QStringLiteral(" is told as ") + spoken;
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

    void whatIsToldOfEveryPageIsWhatItShows_data() { addChoiceRows(); }
    void whatIsToldOfEveryPageIsWhatItShows()
    {
        QFETCH(Choice, choice);
        WindowTour tour(choice);
        QVERIFY(tour.open());
        for (const TourStop &stop : tour.stops()) {
            stop.show();
            QStringList complaints;
            int visited = 0;
            visitAccessible(QAccessible::queryAccessibleInterface(&tour.window()),
                            [&](QAccessibleInterface &node) {
                                ++visited;
                                const QString complaint = falseWordOf(node);
                                if (!complaint.isEmpty())
                                    complaints += complaint;
                            });
            for (const QTreeWidget *tree : tour.window().findChildren<QTreeWidget *>()) {
                if (tree->isVisible())
                    complaints += falseRowsIn(*tree);
            }
            QVERIFY(visited > 10);
            QVERIFY2(complaints.isEmpty(),
                     qPrintable(stop.name + QStringLiteral(": ") + complaints.join(QLatin1Char('\n'))));
        }
    }

    void aRowThatIsHiddenInPartSaysSo()
    {
        WindowTour tour({});
        QVERIFY(tour.open());
        for (const TourStop &stop : tour.stops())
            stop.show();
        const auto *tree = tour.window().findChild<QTreeWidget *>();
        QCOMPARE(tree->topLevelItem(1)->checkState(0), Qt::PartiallyChecked);
        QCOMPARE(tree->model()->index(1, 0).data(Qt::AccessibleDescriptionRole).toString(),
                 QStringLiteral("hidden in part"));
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
