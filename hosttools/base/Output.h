// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/base/Files.h"

/// Results that appear under their name only when they are complete. All of this throws Error, without
/// the path of the result.
namespace FlatPkg {

/// A file without a name, for work in between; it vanishes when it is closed.
FileDescriptor scratchFile(const QByteArray &folder);

/// A file that is made beside its final place. Unless commit() was called nothing of it remains.
class OutputFile
{
public:
    /// Refuses a target that exists and is no regular file; a link is not followed.
    explicit OutputFile(const QByteArray &target);
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    int get() const { return m_file.get(); }

    /// Moves the file into place. A file that is replaced passes on its mode; a new one gets what the user's
    /// file creation mask allows. Nothing is forced to the disk: that is for whoever wants it.
    void commit();

private:
    void giveItAName();

    QByteArray m_target;
    QByteArray m_folder;
    QByteArray m_temporaryPath;
    mode_t m_mode;
    FileDescriptor m_file;
};

/// Makes or replaces a file with these bytes.
void writeFile(const QByteArray &target, const QByteArray &bytes);

/// A new private folder that is made beside its final place, with the same promise.
class OutputFolder
{
public:
    /// Refuses a target that exists, whatever it is.
    explicit OutputFolder(const QByteArray &target);
    ~OutputFolder();
    OutputFolder(const OutputFolder &) = delete;
    OutputFolder &operator=(const OutputFolder &) = delete;

    const QByteArray &path() const { return m_path; }
    int get() const { return m_folder.get(); }

    /// Moves the folder into place with the mode that any new folder would have.
    void commit();

private:
    QByteArray m_target;
    QByteArray m_path;
    FileDescriptor m_folder;
};

} // namespace FlatPkg
