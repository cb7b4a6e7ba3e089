// SPDX-License-Identifier: Apache-2.0
// Whatever an install script holds: a patch that fails leaves it as it was, byte for byte; one that succeeds
// does what the same edit does on lines, and finds nothing to do a second time.
#include "package/ScriptLines.h"
#include "package/ScriptPatch.h"
#include "tests/fuzz/FuzzFile.h"

namespace {

using FilePatch = bool (*)(const QString &path, QString *error);

void require(bool holds)
{
    if (!holds)
        std::abort();
}

QStringList linesOf(const QString &path)
{
    const Result<QString> text = readScript(path);
    require(bool(text));
    return scriptLines(*text);
}

void tryPatch(const FuzzFile &file, const QByteArray &script, FilePatch patchFile, LinesEdit patchLines)
{
    file.write(script);
    QStringList lines = linesOf(file.path());
    const bool succeeds = bool(patchLines(lines));
    require(patchFile(file.path(), nullptr) == succeeds);
    if (!succeeds) {
        require(file.read() == script);
        return;
    }
    require(linesOf(file.path()) == lines);
    require(!patchFile(file.path(), nullptr));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, std::size_t count)
{
    static const FuzzFile file;
    muteLog();
    const QByteArray script(reinterpret_cast<const char *>(bytes), static_cast<int>(count));
    tryPatch(file, script, patchPostinstall, patchPostinstallLines);
    tryPatch(file, script, patchPreinstall, patchPreinstallLines);
    return 0;
}
