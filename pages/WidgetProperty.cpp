// SPDX-License-Identifier: Apache-2.0
#include "pages/WidgetProperty.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTextEdit>

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

} // namespace

QVariant GetWidgetProperty(QWidget *page, const QString &objectName)
{
    // An empty name would find any child.
    if (!page || objectName.isEmpty())
        return {};
    return valueOf(page->findChild<QWidget *>(objectName));
}
