// SPDX-License-Identifier: Apache-2.0
#include "app/ApplicationLook.h"
#include "resources/Resources.h"
#include "tests/app/looks/Contrast.h"
#include "tests/app/looks/Controls.h"
#include "tests/app/looks/Dialogs.h"
#include "tests/app/looks/KeyChanges.h"
#include "tests/app/looks/WindowTour.h"

#include <QtTest>
#include <QtWidgets>

namespace {

constexpr int tooManySteps = 200;

QWidget *focus()
{
    return QApplication::focusWidget();
}

void press(Qt::Key key)
{
    if (focus())
        QTest::keyClick(focus(), key);
}

/// What Tab leads to from a widget until it is back there.
QWidgetList tabChain(QWidget *first)
{
    first->activateWindow();
    first->setFocus(Qt::TabFocusReason);
    if (!QTest::qWaitFor([first] { return first->hasFocus(); }))
        QTest::qFail("the focus is not taken", __FILE__, __LINE__);
    QWidgetList chain = {first};
    for (int i = 0; i < tooManySteps; ++i) {
        press(Qt::Key_Tab);
        if (focus() == first)
            return chain;
        if (!focus() || focus()->visibleRegion().isEmpty()) {
            QTest::qFail(qPrintable(callOf(focus()) + QStringLiteral(" is out of sight")), __FILE__,
                         __LINE__);
            return chain;
        }
        chain += focus();
    }
    return chain;
}

QAbstractButton *checkedBeside(const QAbstractButton *button)
{
    if (button->group())
        return button->group()->checkedButton();
    for (QAbstractButton *sibling : button->parentWidget()->findChildren<QAbstractButton *>()) {
        if (sibling->autoExclusive() && sibling->isChecked())
            return sibling;
    }
    return nullptr;
}

/// What the arrow keys lead to from a button of a group, which stays as it was.
QWidgetList arrowChain(QAbstractButton *first)
{
    QWidgetList reached = {first};
    QAbstractButton *checked = checkedBeside(first);
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
        first->setFocus(Qt::TabFocusReason);
        for (press(key); focus() && !reached.contains(focus()); press(key))
            reached += focus();
    }
    if (checked)
        checked->click();
    return reached;
}

/// All that keys lead to: a chain with what the arrows lead to from its buttons.
QWidgetList withArrows(const QWidgetList &chain)
{
    QWidgetList reached;
    for (QWidget *control : chain) {
        reached += control;
        if (isReachedByArrows(control))
            reached += arrowChain(qobject_cast<QAbstractButton *>(control));
    }
    return reached;
}

/// The part of the window that a control belongs to: its toolbar, its column of page buttons, what stands
/// below, or its page.
QString partOf(const QWidget *control)
{
    for (const QWidget *widget = control; widget; widget = widget->parentWidget()) {
        if (widget->objectName() == QLatin1String("widget_toolbar") ||
            widget->objectName() == QLatin1String("widget_category") ||
            widget->objectName() == QLatin1String("widget_status"))
            return widget->objectName();
    }
    return QStringLiteral("page");
}

QRect placeOf(const QWidget *control)
{
    return {control->mapToGlobal(QPoint()), control->size()};
}

/// Whether the eye, too, goes from the first to the second.
bool followsInReadingOrder(const QRect &first, const QRect &second)
{
    const bool isSideBySide = second.top() <= first.bottom() && first.top() <= second.bottom();
    return isSideBySide ? second.left() > first.left() : second.top() > first.top();
}

QStringList disorderIn(const QWidgetList &chain)
{
    QStringList complaints;
    QStringList parts = {partOf(chain.first())};
    for (int i = 1; i < chain.size(); ++i) {
        const QString step = callOf(chain[i - 1]) + QStringLiteral(" -> ") + callOf(chain[i]);
        if (partOf(chain[i]) != parts.last()) {
            if (parts.contains(partOf(chain[i])))
                complaints += step + QStringLiteral(" goes back to a part that was left");
            parts += partOf(chain[i]);
        } else if (!followsInReadingOrder(placeOf(chain[i - 1]), placeOf(chain[i]))) {
            complaints += step + QStringLiteral(" goes back");
        }
    }
    return complaints;
}

QStringList unreachedBy(const QWidgetList &reached, const QWidget &window)
{
    QStringList complaints;
    for (QWidget *control : controlsIn(window)) {
        if (control->isEnabled() && !reached.contains(control))
            complaints += callOf(control) + QStringLiteral(" is not reached");
    }
    return complaints;
}

// ---- Seeing the focus ----

void scrollTo(QWidget *control)
{
    for (QWidget *widget = control->parentWidget(); widget; widget = widget->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(widget))
            area->ensureWidgetVisible(control);
    }
    QTest::qWait(1);
}

/// How many pixels the focus changes so much that the change can be seen.
int pixelsChangedByFocus(QWidget &window, QWidget *control)
{
    constexpr double visibleContrast = 3.0;
    control->setFocus(Qt::TabFocusReason);
    scrollTo(control);
    const QImage with = window.grab().toImage();
    control->clearFocus();
    const QImage without = window.grab().toImage();
    int changed = 0;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            if (contrastOf(with.pixel(x, y), without.pixel(x, y)) >= visibleContrast)
                ++changed;
        }
    }
    return changed;
}

QStringList invisibleFocusIn(QWidget &window, const QWidgetList &chain)
{
    constexpr int fewestPixels = 16;
    QStringList complaints;
    for (QWidget *control : chain) {
        const int changed = pixelsChangedByFocus(window, control);
        if (changed < fewestPixels)
            complaints +=
                QStringLiteral("%1 shows its focus with %2 pixels").arg(callOf(control)).arg(changed);
    }
    return complaints;
}

/// The keys that stand for more than one thing at once.
QStringList repeatedMnemonics(const QWidget &window)
{
    QStringList complaints;
    QSet<QString> seen;
    for (const QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
        const QString key = QKeySequence::mnemonic(button->text()).toString();
        if (button->isVisible() && !key.isEmpty() && seen.contains(key))
            complaints += callOf(button) + QStringLiteral(" repeats ") + key;
        seen += button->isVisible() ? key : QString();
    }
    return complaints;
}

QStringList labelled(const QString &label, QStringList complaints)
{
    for (QString &complaint : complaints)
        complaint.prepend(label + QStringLiteral(": "));
    return complaints;
}

} // namespace

class tst_Keyboard : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
        useApplicationLook();
    }

    void everyControlIsReachedInReadingOrder_data() { addChoiceRows(); }
    void everyControlIsReachedInReadingOrder();
    void everyControlIsChangedByKeys_data() { addChoiceRows(); }
    void everyControlIsChangedByKeys();
    void arrowsChooseThePages_data() { addChoiceRows(); }
    void arrowsChooseThePages();
    void theFocusIsSeenEverywhere_data() { addChoiceRows(); }
    void theFocusIsSeenEverywhere();
    void everyDialogIsUsedWithKeysAlone_data();
    void everyDialogIsUsedWithKeysAlone();

private:
    /// Complaints about each stop of a tour through the row's window.
    template <typename Check> static QString onTour(const Check &check)
    {
        QFETCH(Choice, choice);
        WindowTour tour(choice);
        if (!tour.open())
            return QStringLiteral("the window does not come");
        QStringList complaints;
        for (const TourStop &stop : tour.stops()) {
            stop.show();
            complaints += labelled(stop.name, check(tour));
        }
        return complaints.join(QLatin1Char('\n'));
    }
};

void tst_Keyboard::everyControlIsReachedInReadingOrder()
{
    const QString complaints = onTour([](WindowTour &tour) {
        const QWidgetList chain = tabChain(tour.tool("tb_open"));
        return disorderIn(chain) + unreachedBy(withArrows(chain), tour.window()) +
               repeatedMnemonics(tour.window());
    });
    QCOMPARE(complaints, QString());
}

void tst_Keyboard::everyControlIsChangedByKeys()
{
    const QString complaints = onTour([](WindowTour &tour) {
        QStringList unchanged;
        for (QWidget *control : tabChain(tour.tool("tb_open"))) {
            if (!changesByKeys(control))
                unchanged += callOf(control) + QStringLiteral(" is not changed by keys");
        }
        return unchanged;
    });
    QCOMPARE(complaints, QString());
}

void tst_Keyboard::arrowsChooseThePages()
{
    QFETCH(Choice, choice);
    WindowTour tour(choice);
    QVERIFY(tour.open());
    for (const TourStop &stop : tour.stops())
        stop.show();
    tour.tool("Preferences")->click();
    tour.tool("Preferences")->setFocus(Qt::TabFocusReason);
    for (const char *next : {"Ribbon Set", "Plugins"}) {
        press(Qt::Key_Down);
        QVERIFY2(tour.tool(next)->isChecked() && tour.tool(next)->hasFocus(), next);
    }
    QVERIFY(tour.window().findChild<QWidget *>(QStringLiteral("tab_plugins"))->isVisible());
}

void tst_Keyboard::theFocusIsSeenEverywhere()
{
    const QString complaints = onTour(
        [](WindowTour &tour) { return invisibleFocusIn(tour.window(), tabChain(tour.tool("tb_open"))); });
    QCOMPARE(complaints, QString());
}

void tst_Keyboard::everyDialogIsUsedWithKeysAlone_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("hasDefaultButton");
    QTest::newRow("chooser") << QStringLiteral("chooser") << true;
    QTest::newRow("About box") << QStringLiteral("about") << false;
    QTest::newRow("signing dialog") << QStringLiteral("signing") << true;
    QTest::newRow("package signing dialog") << QStringLiteral("package-signing") << true;
    QTest::newRow("identifier question") << QStringLiteral("identifier-question") << true;
    QTest::newRow("messages") << QStringLiteral("messages") << true;
    QTest::newRow("save dialog") << QStringLiteral("save-dialog") << true;
}

void tst_Keyboard::everyDialogIsUsedWithKeysAlone()
{
    QFETCH(QString, name);
    QFETCH(bool, hasDefaultButton);
    const QTemporaryDir folder;
    const std::unique_ptr<QDialog> dialog = makeDialog(name, folder.path());
    dialog->show();
    dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));

    if (QWidget *first = focus()) {
        const QWidgetList chain = tabChain(first);
        const QStringList complaints =
            unreachedBy(withArrows(chain), *dialog) + invisibleFocusIn(*dialog, chain);
        QCOMPARE(complaints.join(QLatin1Char('\n')), QString());
    } else {
        QCOMPARE(controlsIn(*dialog), QWidgetList());
    }
    QCOMPARE(repeatedMnemonics(*dialog), QStringList());
    const auto buttons = dialog->findChildren<QPushButton *>();
    const bool hasDefault = std::any_of(buttons.begin(), buttons.end(),
                                        [](const QPushButton *button) { return button->isDefault(); });
    QCOMPARE(hasDefault, hasDefaultButton);
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
}

QTEST_MAIN(tst_Keyboard)
#include "tst_Keyboard.moc"
