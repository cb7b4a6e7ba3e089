// SPDX-License-Identifier: Apache-2.0
// Whatever a configuration document holds: it is refused, or what was read from it can be written and read
// again, and then stays the same.
#include "config/ConfigDocument.h"
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "config/XmlTree.h"
#include "tests/fuzz/FuzzFile.h"

namespace {

bool readInto(const QByteArray &xml, EditorXmlData &settings)
{
    const Result<QDomDocument> document = XmlTree::read(xml);
    if (!document)
        return false;
    ConfigDocument::apply(*document, settings);
    return true;
}

EditorXmlData writtenAndRead(const EditorXmlData &settings)
{
    const Result<QByteArray> xml = ConfigDocument::toXml(
        ConfigDocument::fromSettings(settings, Product::editor(), QStringLiteral("2026.1.0")));
    EditorXmlData result;
    if (!xml || !readInto(*xml, result))
        std::abort();
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, std::size_t count)
{
    muteLog();
    EditorXmlData settings;
    if (!readInto(QByteArray(reinterpret_cast<const char *>(bytes), static_cast<int>(count)), settings))
        return 0;
    const EditorXmlData once = writtenAndRead(settings);
    if (writtenAndRead(once) != once)
        std::abort();
    return 0;
}
