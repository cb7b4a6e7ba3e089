// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/HeldFolder.h"
#include "core/Result.h"
#include "core/TransientFolder.h"

#include <QString>

#include <optional>

class QByteArray;

/// A file on its way to its final place. It is made in a hidden folder beside that, so on the same file
/// system, and moved from there when it is complete. The folder of the place is held from the start: when a
/// folder above is moved or swapped for a link meanwhile, nothing changes where the path leads then. One
/// thread.
///
/// Beside the place, because only within a file system a move is one step, before which the old file is whole
/// and after which the new one is. A folder rather than a file, because commands that make packages want to
/// make the file themselves, under a name with the right ending. Not QSaveFile, which writes through links,
/// goes by paths that may lead elsewhere by the end, and cannot refuse a name that is taken meanwhile.
class OutputFile
{
public:
    enum class Existing {
        Keep,   ///< refuse to replace whatever has the name, also what appears in the last moment
        Replace ///< replace a regular file and keep its permissions; never a link or anything else
    };

    enum class Lasting {
        Yes, ///< wait until the bytes are on the disk
        No   ///< what is needed by this run only can do without
    };

    OutputFile(const QString &path, Existing existing, Lasting lasting = Lasting::Yes);

    QString path() const { return m_path; }

    /// Makes the hidden folder.
    Result<> stage();
    /// Where the file is to be made; only after stage().
    QString stagedPath() const;
    /// Whether it has been made, as a regular file that is not empty.
    bool isStaged() const;

    /// Syncs the staged file, moves it to its place and syncs the folder.
    Result<> place();
    /// Makes the file with these bytes: stage(), write and place().
    Result<> write(const QByteArray &bytes);

    /// Whether place() has refused because the name was taken.
    bool isTaken() const { return m_taken; }

private:
    bool fillStaged(const QByteArray &bytes) const;
    Result<> removeStaging();
    bool isLasting() const { return m_lasting == Lasting::Yes; }
    Result<> moveToFreeName();
    Result<> moveOverFile(int staged) const;
    Problem failed(const QString &text) const { return {m_path, text}; }
    Problem failedByErrno() const;

    QString m_path;
    QByteArray m_name;
    HeldFolder m_folder;
    std::optional<TransientFolder> m_staging;
    Existing m_existing;
    Lasting m_lasting;
    bool m_taken = false;
};
