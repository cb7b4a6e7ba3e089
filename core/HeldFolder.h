// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <memory>

/// A folder that is held open. What is done relative to its descriptor happens in this folder, wherever
/// its path leads by then. Copies share the descriptor, which is closed with the last of them. Any thread.
///
/// A path that was checked says nothing about the next moment: whoever may write to a folder above can swap
/// it for a link between the check and the step. A descriptor stays what it was.
class HeldFolder
{
public:
    /// Opens the folder. A relative path starts at the working folder.
    explicit HeldFolder(const QString &path);

    /// Whether it could be opened, or why not.
    const Result<> &opened() const { return m_opened; }

    /// The path that it was opened by, absolute.
    QString path() const { return m_path; }
    /// For the calls that work relative to a folder; only when it is open.
    int descriptor() const { return *m_descriptor; }

    /// Whether the path still leads to this folder.
    bool isStillThere() const;

private:
    QString m_path;
    Result<> m_opened;
    std::shared_ptr<const int> m_descriptor;
};
