// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>

#include <memory>

class QTemporaryDir;

/// The kept document that a build replaces. Until forget() is called the old file lies aside, in a hidden
/// folder beside it, and the end of the object puts it back in its place.
class ReplacedDocument
{
public:
    ReplacedDocument();
    ~ReplacedDocument();
    ReplacedDocument(const ReplacedDocument &) = delete;
    ReplacedDocument &operator=(const ReplacedDocument &) = delete;

    /// Lays the file at the path aside; once. Nothing at the path, or no regular file there, is nothing to
    /// keep.
    Result<> layAside(const QString &path);

    /// The new document stays.
    void forget();

private:
    Result<> keep() const;
    bool putBack() const;
    QString pathAside() const;

    QString m_path;
    std::unique_ptr<QTemporaryDir> m_folder; ///< null when there is nothing to put back
};
