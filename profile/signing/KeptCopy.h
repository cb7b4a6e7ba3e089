// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QTemporaryDir>

/// A copy of a file in a private folder (random name, mode 0700), to put the file back as it was. The copy
/// goes away with the object, unless putting back failed: then it is all that is left of the file.
class KeptCopy
{
public:
    explicit KeptCopy(const QString &path);

    /// Whether the copy was made.
    bool isValid() const { return m_valid; }

    /// Gives the file its former bytes and permissions, whatever lies at its path now. False, with a
    /// warning in the log that says where the copy stays, when that fails.
    bool putBack();

private:
    QString m_path;
    QTemporaryDir m_folder;
    QString m_copy;
    bool m_valid = false;
};
