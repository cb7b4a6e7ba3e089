// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTemporaryDir>

/// A flat package taken apart by programs of others, so that no code of ours judges what ours has made.
class Unpacked
{
public:
    /// The package must hold the product's component package.
    Unpacked(const QString &package, bool editor);

    /// Path of a member of the component package, such as "Payload".
    QString member(const char *name) const;
    /// Path of a file in the component's Scripts archive.
    QString script(const char *name) const;
    /// The files of the Scripts archive, sorted.
    QStringList scripts() const;

    /// Everything that the package carries, sorted: its members but for the Scripts archive, and the files
    /// in that archive instead.
    QStringList files() const;
    /// Path of one of files().
    QString file(const QString &name) const;

private:
    QTemporaryDir m_folder;
    QString m_component;
};
