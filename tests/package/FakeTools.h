// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// Small shell scripts in place of the commands that the tool starts, first in PATH while the object lives.
/// Each notes the arguments it got.
class FakeTools
{
public:
    FakeTools();
    ~FakeTools();
    FakeTools(const FakeTools &) = delete;
    FakeTools &operator=(const FakeTools &) = delete;

    /// Adds or replaces a command; the text is what it does after noting its arguments.
    void add(const QString &name, const QByteArray &text);

    /// A sed that edits as the BSD one does, so that the tests need no stand-in.
    void addSed();

    /// A pkgutil that expands any file to the Editor's component package with the given scripts, changes
    /// it with a command run in the expanded folder, and flattens to "$3" with another; and a xar that
    /// accepts the result.
    void addPackageTools(const QByteArray &preinstall, const QByteArray &postinstall,
                         const QByteArray &change = ":", const QByteArray &flatten = "printf flat > \"$3\"");

    /// Leaves nothing but the fakes in PATH.
    void hideOthers();

    /// The argument vectors of all calls of a command, in order.
    QList<QStringList> calls(const QString &name) const;

private:
    QString pathOf(const QString &name) const;

    QTemporaryDir m_folder;
    QByteArray m_path;
};
