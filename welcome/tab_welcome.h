// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class tab_welcome;
}

/// The first page in package mode: obtains the vendor's installer package. What kind of file it is, the
/// receiver finds out.
class tab_welcome : public QWidget
{
    Q_OBJECT

public:
    explicit tab_welcome(QWidget *parent = nullptr);
    ~tab_welcome() override;

signals:
    /// A file was chosen or dropped. The last one when several were dropped.
    void sig_fileloaded(const QString &path);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void browse();

    const std::unique_ptr<Ui::tab_welcome> m_ui;
};
