// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/PropertyListInput.h"

#include "profile/propertylist/PropertyListFormats.h"

namespace {

QByteArray withoutLead(const QByteArray &bytes)
{
    const QByteArray byteOrderMark("\xef\xbb\xbf");
    auto start = bytes.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    while (start < bytes.size() && QByteArray(" \t\r\n").contains(bytes.at(start)))
        ++start;
    return bytes.mid(start);
}

Problem tooLarge()
{
    return {{},
            QStringLiteral("it is larger than %1 MiB").arg(PropertyListInput::maximumBytes / (1024 * 1024))};
}

bool isXml(const QByteArray &bytes)
{
    // In UTF-16, too, with its mark or without.
    return bytes.startsWith('<') || bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff") ||
           bytes.startsWith(QByteArray("\0<", 2));
}

} // namespace

PropertyListInput::Format PropertyListInput::formatOf(const QByteArray &bytes)
{
    if (BinaryPropertyList::isBinary(bytes))
        return Format::Binary;
    return isXml(withoutLead(bytes)) ? Format::Xml : Format::OldStyle;
}

Result<> PropertyListInput::read(const QByteArray &bytes, PropertyList::Sink &sink)
{
    if (bytes.size() > maximumBytes)
        return tooLarge();
    switch (formatOf(bytes)) {
    case Format::Binary:
        return BinaryPropertyList::read(bytes, sink);
    case Format::Xml:
        return XmlPropertyList::read(withoutLead(bytes), sink);
    case Format::OldStyle:
        break;
    }
    return OldStylePropertyList::read(withoutLead(bytes), sink);
}
