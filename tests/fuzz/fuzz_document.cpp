// SPDX-License-Identifier: Apache-2.0
// Whatever a configuration document holds: it is refused, or what was read from it can be written and read
// again, and then stays the same.
#include "config/ConfigDocument.h"
#include "config/EditorXmlData.h"
#include "tests/fuzz/FuzzFile.h"

#include <QDomDocument>

namespace {

bool readInto(const QString &path, EditorXmlData &settings)
{
    QDomDocument document;
    if (!ConfigDocument::load(path, document))
        return false;
    ConfigDocument::apply(document, settings);
    return true;
}

EditorXmlData writtenAndRead(const EditorXmlData &settings, const QString &path)
{
    theEditorXmlData = settings;
    const bool saved =
        ConfigDocument::save(ConfigDocument::fromRecord(true, QStringLiteral("2026.1.0")), path);
    EditorXmlData result;
    if (!saved || !readInto(path, result))
        std::abort();
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, std::size_t count)
{
    static const FuzzFile file;
    muteLog();
    file.write(QByteArray(reinterpret_cast<const char *>(bytes), static_cast<int>(count)));
    EditorXmlData settings;
    if (!readInto(file.path(), settings))
        return 0;
    const EditorXmlData once = writtenAndRead(settings, file.path());
    if (writtenAndRead(once, file.path()) != once)
        std::abort();
    return 0;
}
