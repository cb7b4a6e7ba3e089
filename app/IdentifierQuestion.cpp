// SPDX-License-Identifier: Apache-2.0
#include "app/IdentifierQuestion.h"

#include <QAbstractButton>
#include <QKeyEvent>

namespace {

QString richText(const QString &content)
{
    return QStringLiteral("<html><head><style>p.content { margin: 5px 10px 10px 10px;"
                          " font-family: \"SF Pro Text\"; font-size: 13px; font-style: normal;"
                          " font-weight: 400; line-height: 20px; }</style></head>"
                          "<body><p class=\"content\">%1</p></body></html>")
        .arg(content);
}

} // namespace

IdentifierQuestion::IdentifierQuestion(QWidget *parent)
    : QMessageBox(Warning, QString(), QString(), Yes | No, parent)
{
    setTextFormat(Qt::RichText);
    setText(richText(tr("The current profile identifier doesn't match the one in your system configuration. "
                        "This may cause errors. Which identifier would you like to use?")));
    button(Yes)->setText(tr("Use Current"));
    button(No)->setText(tr("Keep System"));
    button(Yes)->setToolTip(tr(
        "Makes a new identifier and UUID: the profile is installed beside the other one, not in its place."));
    button(No)->setToolTip(
        tr("Takes identifier and UUID of the installed profile, so that this one replaces it."));
    setDefaultButton(Yes);
}

// A message box takes closing for its No button. Here No is one of two answers, and none was given.

void IdentifierQuestion::closeEvent(QCloseEvent *event)
{
    QDialog::closeEvent(event); // NOLINT(bugprone-parent-virtual-call)
}

void IdentifierQuestion::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel))
        reject();
    else
        QMessageBox::keyPressEvent(event);
}
