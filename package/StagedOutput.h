// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QTemporaryDir>

/// A package on its way to its final place. It is flattened into a hidden folder of this process beside the
/// output, so on the same file system, and moved from there. The folder is removed with the object.
class StagedOutput
{
public:
    explicit StagedOutput(const QString &output);

    /// Flattens a folder and reads the result back: it must be a package with the product's scripts.
    bool flatten(const QString &folder, bool editor, QString *error);

    /// Moves the flattened package to the output's path, replacing a file there.
    bool moveIntoPlace(QString *error);

private:
    QString path() const;
    bool check(bool editor, QString *error) const;

    QString m_output;
    QTemporaryDir m_folder;
};
