// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QList>
#include <QString>

#include <functional>
#include <memory>

/// A dialog of the tool as it is first seen.
struct DialogKind
{
    QString name; ///< in small letters and hyphens, for example "about"
    std::function<std::unique_ptr<QDialog>()> make;
};

/// Every dialog beside the main window. The save dialog shows `folder`.
QList<DialogKind> everyDialog(const QString &folder);

/// The dialog of that name.
std::unique_ptr<QDialog> makeDialog(const QString &name, const QString &folder);
