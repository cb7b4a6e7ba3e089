// SPDX-License-Identifier: Apache-2.0
// Whatever a profile holds: it is refused and the record stays, or what was read from it is refused by the
// writer, as a binary list may hold characters that no XML can, or it can be written and read again, and then
// stays the same.
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "profile/ConfigGenerator.h"
#include "tests/fuzz/FuzzFile.h"

#include <QLoggingCategory>

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

EditorXmlData readBack(const QString &profile, const Product *product)
{
    EditorXmlData result;
    const Result<const Product *> read = ConfigGenerator::importAny(profile.toUtf8(), result);
    require(read && *read == product);
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, std::size_t count)
{
    muteLog();
    QLoggingCategory::setFilterRules(QStringLiteral("pct.*=false")); // Foundation's lines as well
    EditorXmlData settings;
    const QByteArray input(reinterpret_cast<const char *>(bytes), static_cast<int>(count));
    const Result<const Product *> product = ConfigGenerator::importAny(input, settings);
    if (!product) {
        require(settings == EditorXmlData() && !product.problem().text.isEmpty());
        return 0;
    }
    const Result<QString> profile = ConfigGenerator::generate(&settings, **product);
    if (!profile)
        return 0;
    const EditorXmlData once = readBack(*profile, *product);
    const Result<QString> again = ConfigGenerator::generate(&once, **product);
    require(again && readBack(*again, *product) == once);
    return 0;
}
