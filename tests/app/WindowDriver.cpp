// SPDX-License-Identifier: Apache-2.0
#include "tests/app/WindowDriver.h"

#include "tests/support/DialogDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QUrl>

void WindowDriver::readAndAccept(QDialog *dialog, ShownMessage *shown)
{
    auto *box = qobject_cast<QMessageBox *>(dialog);
    if (!box) {
        QTest::qFail("the modal dialog is not a message box", __FILE__, __LINE__);
        dialog->reject();
        return;
    }
    *shown = {box->windowTitle(),     box->text(),         box->icon(),
              box->standardButtons(), box->parentWidget(), shown->count + 1};
    box->button(QMessageBox::Ok)->click();
}

void WindowDriver::acceptMessage(QObject *context, ShownMessage *shown)
{
    DialogDriver::onNextModal(context, [shown](QDialog *dialog) { readAndAccept(dialog, shown); });
}

void WindowDriver::saveAs(QObject *context, const QString &path, bool keepDocument,
                          const std::function<void()> &next)
{
    DialogDriver::onNextModal(context, [=](QDialog *dialog) {
        dialog->findChild<QCheckBox *>()->setChecked(keepDocument);
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(path);
        next();
        dialog->accept();
    });
}

bool WindowDriver::dropFiles(QWidget *target, const QStringList &paths)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls << QUrl::fromLocalFile(path);
    data.setUrls(urls);
    const QPoint middle = target->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    return QApplication::sendEvent(target, &drop) && drop.isAccepted();
}
