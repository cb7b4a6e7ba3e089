// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QUrl>
#include <QWidget>

/// Address of a help page in "../Resources/pcw/en-US/" beside the application's folder. `encodedName` is a
/// page's file name, URL-encoded, with or without an anchor.
QUrl helpAddress(const QString &applicationFolder, const QString &encodedName);

/// Shows help beside a page.
class HelpPanel : public QWidget
{
    Q_OBJECT

public:
    explicit HelpPanel(QWidget *parent = nullptr);

    /// Shows a help page, or says that it is not available.
    void load(const QUrl &address);
};
