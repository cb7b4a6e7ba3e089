// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/app/PrivatePlace.h"

const QString editorTitle = QStringLiteral("Pelix PDF Editor");
const QString readerTitle = QStringLiteral("Pelix PDF Reader");

/// Packages that are text files which hold what `installer` says of them.
class FakePackages : public PrivatePlace
{
public:
    /// Makes an `installer` that reads them the one that is found.
    void useAsInstaller() const
    {
        TestFiles::writeScript(path("tools/installer"), "cat \"$3\"\n");
        const QByteArray folder = QFile::encodeName(path("tools"));
        qputenv("PCT_HOSTTOOLS", folder);
        // On a Mac nothing else makes the program find it.
        const QByteArray searched = folder + ':' + qgetenv("PATH");
        qputenv("PATH", searched);
    }

    QString make(const QString &title, const QString &name = QStringLiteral("vendor.pkg")) const
    {
        const QString file = path("packages/") + name;
        TestFiles::write(file, title.toUtf8() + '\n');
        return file;
    }
};
