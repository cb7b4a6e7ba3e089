// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/HostPaths.h"
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
        qputenv("PCT_HOSTTOOLS", QFile::encodeName(path("tools")));
        HostPaths::putStandInsFirst();
    }

    QString make(const QString &title, const QString &name = QStringLiteral("vendor.pkg")) const
    {
        const QString file = path("packages/") + name;
        TestFiles::write(file, title.toUtf8() + '\n');
        return file;
    }
};
