// SPDX-License-Identifier: Apache-2.0
// Whatever a profile holds: it is refused and the record stays, or what was read from it is refused by the writer,
// as a binary list may hold characters that no XML can, or it can be written and read again, and then stays the same.
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

EditorXmlData readBack(const QString &profile, bool editor)
{
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
    const QString profile = ConfigGenerator::generate(&settings, editor);
    if (profile.isNull())
        return 0;
    const EditorXmlData once = readBack(profile, editor);
    const QString again = ConfigGenerator::generate(&once, editor);
    require(!again.isNull() && readBack(again, editor) == once);
    return 0;
}
