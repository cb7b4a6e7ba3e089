// SPDX-License-Identifier: Apache-2.0
#include "tests/app/looks/KeyChanges.h"

#include "tests/app/looks/Controls.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>

namespace {

void press(Qt::Key key)
{
    if (QWidget *focus = QApplication::focusWidget())
        QTest::keyClick(focus, key);
}

/// A menu that closes takes the display's focus with it, and the window has it again a moment later.
bool takesFocus(QWidget *control)
{
    control->activateWindow();
    control->setFocus(Qt::TabFocusReason);
    return QTest::qWaitFor([control] { return control->hasFocus(); });
}

bool toggles(QAbstractButton *button)
{
    const bool before = button->isChecked();
    press(Qt::Key_Space);
    const bool changed = button->isChecked() != before;
    press(Qt::Key_Space);
    return changed && button->isChecked() == before;
}

/// Looks no further than the key's way down, because letting go may open a dialog.
bool isPressed(QAbstractButton *button)
{
    QTest::keyPress(button, Qt::Key_Space);
    const bool down = button->isDown();
    button->setDown(false);
    button->clearFocus();
    button->setFocus();
    return down;
}

bool opensItsMenu(QToolButton *button)
{
    QMenu *menu = button->menu();
    bool opened = false;
    const auto noting = QObject::connect(menu, &QMenu::aboutToShow, button, [&opened] { opened = true; });
    // Again and again, because what opens the menu goes on only after it is closed.
    QTimer closing;
    closing.callOnTimeout(menu, &QMenu::close);
    closing.start(20);
    press(Qt::Key_Space);
    QObject::disconnect(noting);
    return opened;
}

bool changes(QAbstractButton *button)
{
    auto *tool = qobject_cast<QToolButton *>(button);
    if (tool && tool->menu())
        return opensItsMenu(tool);
    if (isReachedByArrows(button))
        return true; // that the arrows choose is seen where the buttons are reached
    return button->isCheckable() ? toggles(button) : isPressed(button);
}

bool changes(QComboBox *box)
{
    const int before = box->currentIndex();
    press(before == 0 ? Qt::Key_Down : Qt::Key_Up);
    const bool changed = box->currentIndex() != before;
    box->setCurrentIndex(before);
    return changed || box->count() < 2;
}

bool isTyped(QWidget *edit, const std::function<QString()> &text)
{
    const QString before = text();
    press(Qt::Key_X);
    const bool changed = text() != before;
    press(Qt::Key_Backspace);
    return changed && edit->hasFocus() && text() == before;
}

bool changes(QTreeWidget *tree)
{
    press(Qt::Key_Home);
    const QTreeWidgetItem *first = tree->currentItem();
    press(Qt::Key_Down);
    QTreeWidgetItem *second = tree->currentItem();
    const Qt::CheckState before = second->checkState(0);
    press(Qt::Key_Space);
    const bool changed = second != first && second->checkState(0) != before;
    second->setCheckState(0, before);
    return changed;
}

bool changes(QAbstractItemView *view)
{
    if (auto *tree = qobject_cast<QTreeWidget *>(view))
        return changes(tree);
    const QModelIndex before = view->currentIndex();
    press(Qt::Key_Home);
    press(before.row() == 0 ? Qt::Key_Down : Qt::Key_Home);
    const bool changed = view->currentIndex() != before || view->model()->rowCount() < 2;
    view->setCurrentIndex(before);
    return changed;
}

} // namespace

bool changesByKeys(QWidget *control)
{
    if (!takesFocus(control))
        return false;
    if (auto *button = qobject_cast<QAbstractButton *>(control))
        return changes(button);
    if (auto *box = qobject_cast<QComboBox *>(control))
        return changes(box);
    if (auto *view = qobject_cast<QAbstractItemView *>(control))
        return changes(view);
    if (auto *line = qobject_cast<QLineEdit *>(control))
        return isTyped(line, [line] { return line->text(); });
    if (auto *text = qobject_cast<QTextEdit *>(control))
        return isTyped(text, [text] { return text->toPlainText(); });
    return false;
}
