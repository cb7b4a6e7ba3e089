// SPDX-License-Identifier: Apache-2.0
// Whatever a profile holds: it is refused and the record stays, or what was read from it can be written and
// read again, and then stays the same.
#include "config/EditorXmlData.h"
#include "profile/ConfigGenerator.h"
#include "tests/fuzz/FuzzFile.h"

#include <QLoggingCategory>

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

EditorXmlData writtenAndRead(const EditorXmlData &settings, bool editor)
{
    const QString profile = ConfigGenerator::generate(&settings, editor);
    require(!profile.isNull());
    EditorXmlData result;
    bool readEditor = !editor;
    QString error;
    require(ConfigGenerator::importAny(profile.toUtf8(), result, readEditor, error));
    require(readEditor == editor && error.isEmpty());
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, std::size_t count)
{
    muteLog();
    QLoggingCategory::setFilterRules(QStringLiteral("pct.*=false")); // Foundation's lines as well
    EditorXmlData settings;
    bool editor = false;
    QString error;
    const QByteArray input(reinterpret_cast<const char *>(bytes), static_cast<int>(count));
    if (!ConfigGenerator::importAny(input, settings, editor, error)) {
        require(settings == EditorXmlData() && !error.isEmpty());
        return 0;
    }
    const EditorXmlData once = writtenAndRead(settings, editor);
    require(writtenAndRead(once, editor) == once);
    return 0;
}
