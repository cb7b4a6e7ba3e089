// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

/// A page that obtains a file of one kind, by a drop or from a file dialog. Derived pages pass it on.
class FileDropPage : public QWidget
{
    Q_OBJECT

protected:
    /// `suffix` is what follows the last dot of the files taken, case included.
    FileDropPage(const QString &suffix, QWidget *parent);

    /// Asks for a file; without a choice nothing happens.
    void askForFile(const QString &filter);

    /// A file was chosen or dropped. The first one when several were dropped.
    virtual void takeFile(const QString &path) = 0;

    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    const QString m_suffix;
};
