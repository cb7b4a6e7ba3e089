// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <memory>

class QTemporaryDir;

/// The kept document that a build replaces. Until forget() is called the old file lies aside, in a hidden
/// folder beside it, and the end of the object puts it back in its place.
class ReplacedDocument
{
public:
    /// Lays the file at the path aside as well. Nothing at the path, or no regular file there, is nothing to
    /// keep.
    explicit ReplacedDocument(const QString &path);
    ~ReplacedDocument();
    ReplacedDocument(const ReplacedDocument &) = delete;
    ReplacedDocument &operator=(const ReplacedDocument &) = delete;

    /// Why the old file could not be laid aside; empty when it could, or when there is none.
    QString problem() const;

    /// The new document stays.
    void forget();

private:
    QString layAside();
    bool putBack() const;
    QString pathAside() const;

    QString m_path;
    std::unique_ptr<QTemporaryDir> m_folder; ///< null when there is nothing to put back
    QString m_problem;
};
