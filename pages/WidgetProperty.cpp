// SPDX-License-Identifier: Apache-2.0
#include "pages/WidgetProperty.h"

#include "config/SettingItems.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTextEdit>

#include <algorithm>

namespace {

QVariant valueOf(const QWidget *control)
{
    if (const auto *box = qobject_cast<const QComboBox *>(control))
        return box->currentIndex();
    if (const auto *box = qobject_cast<const QCheckBox *>(control))
        return box->checkState() == Qt::Checked;
    if (const auto *edit = qobject_cast<const QLineEdit *>(control))
        return edit->text().trimmed();
    if (const auto *edit = qobject_cast<const QTextEdit *>(control))
        return edit->toPlainText().trimmed();
    if (const auto *button = qobject_cast<const QRadioButton *>(control))
        return button->isChecked();
    return {};
}

/// What was imported is shown as it stands: only entered text loses what does not belong there.
void setTextOf(QTextEdit *edit, const QString &text)
{
    const QSignalBlocker blocker(edit);
    edit->setPlainText(text);
}

void setChecked(QRadioButton *button, bool on)
{
    // Only another one can take the check from it.
    const auto choices =
        button->parentWidget()->findChildren<QRadioButton *>(QString(), Qt::FindDirectChildrenOnly);
    const auto choice = std::find_if(choices.begin(), choices.end(),
                                     [&](const QRadioButton *one) { return on == (one == button); });
    if (choice != choices.end())
        (*choice)->setChecked(true);
}

bool setValueOf(QWidget *control, const QVariant &value)
{
    if (auto *list = qobject_cast<QComboBox *>(control))
        list->setCurrentIndex(value.toInt());
    else if (auto *box = qobject_cast<QCheckBox *>(control))
        box->setChecked(value.toBool());
    else if (auto *line = qobject_cast<QLineEdit *>(control))
        line->setText(value.toString());
    else if (auto *edit = qobject_cast<QTextEdit *>(control))
        setTextOf(edit, value.toString());
    else if (auto *button = qobject_cast<QRadioButton *>(control))
        setChecked(button, value.toBool());
    else
        return false;
    return true;
}

/// An empty name would find any child.
QWidget *controlOf(const QWidget *page, const QString &objectName)
{
    return page && !objectName.isEmpty() ? page->findChild<QWidget *>(objectName) : nullptr;
}

} // namespace

QVariant GetWidgetProperty(QWidget *page, const QString &objectName)
{
    return valueOf(controlOf(page, objectName));
}

bool SetWidgetProperty(QWidget *page, const QString &objectName, const QVariant &value)
{
    return setValueOf(controlOf(page, objectName), value);
}

void fillControls(QWidget *page, const EditorXmlData &data)
{
    for (const Setting *setting : settingsInTurns()) {
        const auto toVariant = [](const auto &value) { return QVariant(value); };
        const QVariant value = std::visit(toVariant, setting->control.shown(data));
        SetWidgetProperty(page, setting->control.name, value);
    }
}
