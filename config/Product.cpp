// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"

#include <algorithm>

const std::array<Product, 2> &Product::all()
{
    static const std::array<Product, 2> products = {{
        {PCW_APP_EDITOR, QLatin1String("editor"), QLatin1String("Pelix PDF Editor"),
         QLatin1String("PelixPDFEditor"), QLatin1String("Biz"), QLatin1String("OnlyEditor"),
         QLatin1String("://EditorXml/EditorXml/DefaultPluginsList_PDFEditor_Mac.xml"),
         QLatin1String("Pelix_PDF_Editor.pkg"), QLatin1String("com.pelix-software.Pelix.PDF.Editor")},
        {PCW_APP_READER, QLatin1String("reader"), QLatin1String("Pelix PDF Reader"),
         QLatin1String("PelixPDFReader"), QLatin1String(""), QLatin1String("OnlyReader"),
         QLatin1String("://EditorXml/EditorXml/DefaultPluginsList_PDFReader_Mac.xml"),
         QLatin1String("Pelix_PDF_Reader.pkg"), QLatin1String("com.pelix-software.Pelix.PDF.Reader")},
    }};
    return products;
}

const Product &Product::other() const
{
    return isEditor() ? reader() : editor();
}

QString Product::settingsType() const
{
    return bundleIdentifier + QLatin1String(".settings");
}

const Product &Product::of(PCW_APPTYPE type)
{
    return type == PCW_APP_EDITOR ? editor() : reader();
}

const Product *Product::find(QLatin1String Product::*key, const QString &text)
{
    const auto found = std::find_if(all().begin(), all().end(),
                                    [&](const Product &product) { return product.*key == text; });
    return found == all().end() ? nullptr : &*found;
}
