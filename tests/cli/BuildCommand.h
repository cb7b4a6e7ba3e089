// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// The command line of one `pct build`.
struct BuildCommand
{
    bool editor = true;
    QString input;
    QString output;
    QStringList more; ///< further words, e.g. {"--force"}

    QStringList arguments() const;
};

/// A package that other programs than ours have taken apart.
class ExpandedPackage
{
public:
    explicit ExpandedPackage(const QString &package);

    /// The bytes of a member of the component package, e.g. "Payload".
    QByteArray member(const QString &name) const;
    /// Path of a file in the install scripts' folder.
    QString scriptPath(const QString &name) const;
    /// The bytes of such a file, empty when it is missing.
    QByteArray script(const QString &name) const;
    /// The text that an XPath expression finds in the package's ProfStore.xml.
    QByteArray setting(const QString &xpath) const;

private:
    QTemporaryDir m_folder;
    QString m_component;
};

/// XPath of an attribute of a preference item in a configuration document.
QString preferencePath(const QString &text, const QString &attribute);
