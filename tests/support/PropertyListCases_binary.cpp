// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PropertyListCases.h"

namespace {

void addRefused(QList<PropertyListCase> &rows, const QByteArray &name, const QByteArray &profile)
{
    rows.append({name, profile, false, {}, false});
}

void addRead(QList<PropertyListCase> &rows, const QByteArray &name, const QByteArray &profile,
             const char *domains)
{
    rows.append({name, profile, true, QString::fromUtf8(domains), false});
}

QByteArray bigEndian(quint64 value, int width)
{
    QByteArray bytes;
    for (int i = width - 1; i >= 0; --i)
        bytes += i < 8 ? char(value >> (8 * i) & 0xff) : '\0';
    return bytes;
}

/// A binary list in the making, its parts open to damage. The first object is the top.
struct BinaryList
{
    QByteArray header = "bplist00";
    QList<QByteArray> objects;
    int offsetWidth = 2;
    int referenceWidth = 1;
    QByteArray behindTable;
    int moreObjects = 0;
    quint64 top = 0;
    quint64 lastOffset = 0; ///< in place of the right one

    QByteArray bytes() const
    {
        QByteArray body = header;
        QByteArray table;
        for (const QByteArray &object : objects) {
            const bool isMoved = lastOffset != 0 && &object == &objects.last();
            table += bigEndian(isMoved ? lastOffset : quint64(body.size()), offsetWidth);
            body += object;
        }
        const auto start = quint64(body.size());
        return body + table + behindTable + QByteArray(6, '\0') + char(offsetWidth) + char(referenceWidth) +
               bigEndian(quint64(objects.size() + moreObjects), 8) + bigEndian(top, 8) + bigEndian(start, 8);
    }

    QByteArray collection(char kind, const QList<int> &members) const
    {
        QByteArray object(1, kind);
        for (const int member : members)
            object += bigEndian(quint64(member), referenceWidth);
        return object;
    }
};

QByteArray ascii(const QByteArray &text)
{
    const auto size = text.size();
    return (size < 15 ? QByteArray(1, char(0x50 + size)) : QByteArray("\x5f\x10") + char(size)) + text;
}

BinaryList profileList(const QByteArray &value, int offsetWidth = 2, int referenceWidth = 1)
{
    BinaryList list;
    list.offsetWidth = offsetWidth;
    list.referenceWidth = referenceWidth;
    list.objects = {list.collection('\xd4', {1, 2, 3, 4, 5, 6, 7, 8}),
                    ascii("PayloadContent"),
                    ascii("PayloadIdentifier"),
                    ascii("PayloadType"),
                    ascii("PayloadUUID"),
                    list.collection('\xa1', {9}),
                    ascii("a.b"),
                    ascii("Configuration"),
                    ascii("U"),
                    list.collection('\xd2', {2, 10, 11, 12}),
                    ascii("Preferences"),
                    ascii("com.pelix-software.Pelix.PDF.Editor"),
                    list.collection('\xa1', {13}),
                    list.collection('\xd1', {14, 15}),
                    ascii("Preference"),
                    list.collection('\xd2', {16, 17, 18, 19}),
                    ascii("Text"),
                    ascii("String"),
                    ascii("LoginDomainList"),
                    value};
    return list;
}

void addBinaryIntegers(QList<PropertyListCase> &rows)
{
    const auto read = [&rows](const QByteArray &name, const QByteArray &object, const char *domains) {
        addRead(rows, name, profileList(object).bytes(), domains);
    };
    read("one byte has no sign", "\x10\xff", "255");
    read("four bytes have no sign", "\x12\xff\xff\xff\xff", "4294967295");
    read("eight bytes have a sign", "\x13" + QByteArray(8, '\xff'), "-1");
    read("2^63 - 1", "\x13\x7f" + QByteArray(7, '\xff'), "9223372036854775807");
    read("2^63 in 16 bytes", "\x14" + QByteArray(8, '\0') + "\x80" + QByteArray(7, '\0'),
         "9223372036854775808");
    read("2^64 - 1 in 16 bytes", "\x14" + QByteArray(8, '\0') + QByteArray(8, '\xff'),
         "18446744073709551615");
    read("1 in 16 bytes", "\x14" + QByteArray(15, '\0') + "\x01", "1");
    addRefused(rows, "2^64 in 16 bytes",
               profileList("\x14" + QByteArray(7, '\0') + "\x01" + QByteArray(8, '\0')).bytes());
    addRefused(rows, "an integer of 32 bytes", profileList("\x15" + QByteArray(32, '\0')).bytes());
}

void addBinaryObjects(QList<PropertyListCase> &rows)
{
    const auto read = [&rows](const QByteArray &name, const QByteArray &object, const char *domains) {
        addRead(rows, name, profileList(object).bytes(), domains);
    };
    const auto refused = [&rows](const QByteArray &name, const QByteArray &object) {
        addRefused(rows, name, profileList(object).bytes());
    };
    read("text", ascii("x.example"), "x.example");
    read("text with a count of its own", ascii("a-long-name.example"), "a-long-name.example");
    read("text in UTF-16", QByteArray("\x62\x00\xe4\x26\x3a", 5), "\xc3\xa4\xe2\x98\xba");
    read("real of four bytes", QByteArray("\x22\x40\x20\x00\x00", 5), "2.5");
    read("real of eight bytes", QByteArray("\x23\x40\x04\x00\x00\x00\x00\x00\x00", 9), "2.5");
    read("true", "\x09", "1");
    read("false", "\x08", "0");
    read("data", QByteArray("\x42\x00\x01", 3), "");
    read("date", QByteArray("\x33\x41\xb0\x00\x00\x00\x00\x00\x00", 9), "");
    read("an archiver's number", "\x80\x05", "");
    refused("fill", "\x0f");
    refused("an unknown simple object", "\x05");
    refused("real of two bytes", QByteArray("\x21\x40\x00", 3));
    refused("date of four bytes", QByteArray("\x32\x40\x00\x00\x00", 5));
    refused("ASCII with another byte", "\x52\x61\xe4");
    refused("text beyond the table", "\x5a\x61\x62");
    refused("text with a count without end", "\x5f\x13" + QByteArray(8, '\x7f'));
    refused("text with a count that is no integer", "\x5f\x51\x61");
    refused("data beyond the table", QByteArray("\x4f\x11\x7f\xff", 4));
    refused("array beyond the table", "\xaf\x12\x7f\xff\xff\xff");
    refused("dictionary beyond the table", "\xdf\x13\x7f" + QByteArray(7, '\xff'));
    refused("array that holds itself", "\xa1\x13");
    refused("dictionary with a number for a key", QByteArray("\xd1\x00\x00", 3));
    refused("reference beyond the objects", "\xa1\x14");
    for (const char kind : {'\x70', '\x90', '\xe0', '\xf0'})
        refused(QByteArray("unknown type ") + QByteArray::number(uchar(kind) >> 4, 16), QByteArray(1, kind));
}

void addBinaryTables(QList<PropertyListCase> &rows)
{
    const QByteArray value = ascii("x");
    for (int width = 1; width <= 8; ++width)
        addRead(rows, "offsets of " + QByteArray::number(width) + " bytes", profileList(value, width).bytes(),
                "x");
    for (int width = 1; width <= 8; ++width)
        addRead(rows, "references of " + QByteArray::number(width) + " bytes",
                profileList(value, 2, width).bytes(), "x");
    for (const auto *header : {"bplist01", "bplist0x", "bplist0?"}) {
        BinaryList list = profileList(value);
        list.header = header;
        addRead(rows, QByteArray("header ") + header, list.bytes(), "x");
    }
    const auto refused = [&rows, &value](const char *name, const auto &damage) {
        BinaryList list = profileList(value);
        damage(list);
        addRefused(rows, name, list.bytes());
    };
    refused("header bplist10", [](BinaryList &list) { list.header = "bplist10"; });
    refused("no width of offsets", [](BinaryList &list) { list.offsetWidth = 0; });
    refused("no width of references", [](BinaryList &list) { list.referenceWidth = 0; });
    refused("offsets too narrow for the file", [](BinaryList &list) {
        list.offsetWidth = 1;
        list.objects.last() = ascii(QByteArray(100, 'x'));
    });
    refused("one object more than there is", [](BinaryList &list) { list.moreObjects = 1; });
    refused("one object less than there is", [](BinaryList &list) { list.moreObjects = -1; });
    refused("no object", [](BinaryList &list) { list.objects.clear(); });
    refused("objects without number", [](BinaryList &list) { list.moreObjects = -100; });
    refused("top beyond the objects", [](BinaryList &list) { list.top = 20; });
    refused("bytes behind the table", [](BinaryList &list) { list.behindTable = "x"; });
    refused("offset into the table", [](BinaryList &list) { list.lastOffset = 60000; });
    refused("offset into the header", [](BinaryList &list) { list.lastOffset = 7; });
    addRefused(rows, "nothing but a header", "bplist00");
    const QByteArray whole = profileList(value).bytes();
    for (int size = whole.size() - 1; size > 8; size -= 13)
        addRefused(rows, "cut off at " + QByteArray::number(size), whole.left(size));
}

} // namespace

QList<PropertyListCase> PropertyListCases::binary()
{
    QList<PropertyListCase> rows;
    addBinaryIntegers(rows);
    addBinaryObjects(rows);
    addBinaryTables(rows);
    return rows;
}

QByteArray PropertyListCases::binaryProfileWith(const QByteArray &object)
{
    return profileList(object).bytes();
}
