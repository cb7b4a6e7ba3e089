// SPDX-License-Identifier: Apache-2.0
#include "hosttools/profiles/BinaryList.h"

#include "hosttools/base/Error.h"

using namespace FlatPkg;

namespace {

constexpr int headerSize = 8;
constexpr int trailerSize = 32;
constexpr char integerOf16Bytes = 0x14;

quint64 numberAt(const QByteArray &bytes, quint64 offset, int width)
{
    quint64 number = 0;
    for (int i = 0; i < width; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes.at(int(offset) + i));
    return number;
}

bool isWideEnough(int width, quint64 largest)
{
    return width == 8 || (width > 0 && width < 8 && largest >> (8 * width) == 0);
}

void require(bool isSound)
{
    if (!isSound)
        throw Error("is not a property list: the tables of the binary list are damaged");
}

/// Readers take the lower half of such an integer for the whole.
void requireSmallInteger(const QByteArray &bytes, quint64 offset)
{
    const bool isWide = bytes.at(int(offset)) == integerOf16Bytes;
    if (isWide && numberAt(bytes, offset + 1, 8) != 0)
        throw Error("is not a property list: an integer has more than 64 bits");
}

} // namespace

bool BinaryList::isOne(const QByteArray &bytes)
{
    return bytes.startsWith("bplist0");
}

QByteArray BinaryList::withSoundTables(const QByteArray &bytes)
{
    require(bytes.size() > headerSize + trailerSize);
    const auto trailer = quint64(bytes.size() - trailerSize);
    const int offsetWidth = int(numberAt(bytes, trailer + 6, 1));
    const int referenceWidth = int(numberAt(bytes, trailer + 7, 1));
    const quint64 objects = numberAt(bytes, trailer + 8, 8);
    const quint64 table = numberAt(bytes, trailer + 24, 8);
    require(isWideEnough(offsetWidth, table) && isWideEnough(referenceWidth, objects));
    require(table > headerSize && table < trailer && objects <= trailer &&
            table + objects * quint64(offsetWidth) == trailer);
    for (quint64 i = 0; i < objects; ++i) {
        const quint64 offset = numberAt(bytes, table + i * quint64(offsetWidth), offsetWidth);
        require(offset >= headerSize && offset < table);
        requireSmallInteger(bytes, offset);
    }
    return QByteArray(bytes).replace(0, headerSize, "bplist00");
}
