// SPDX-License-Identifier: Apache-2.0
// Parses a file with Expat and does nothing with it.
//
// usage: expat_alone FILE
#include <cstdio>
#include <expat.h>
#include <fstream>
#include <string>

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: expat_alone FILE\n", stderr);
        return 2;
    }
    std::ifstream file(argv[1], std::ios::binary | std::ios::ate);
    std::string xml(static_cast<std::size_t>(file.tellg()), '\0');
    file.seekg(0).read(xml.data(), static_cast<std::streamsize>(xml.size()));
    XML_Parser parser = XML_ParserCreate(nullptr);
    const bool parsed =
        XML_Parse(parser, xml.data(), static_cast<int>(xml.size()), XML_TRUE) == XML_STATUS_OK;
    XML_ParserFree(parser);
    return file && parsed ? 0 : 1;
}
