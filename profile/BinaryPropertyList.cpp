// SPDX-License-Identifier: Apache-2.0
#include "profile/BinaryPropertyList.h"

#include "profile/PropertyListInput.h"

namespace {

constexpr int headerSize = 8;
constexpr int trailerSize = 32;

constexpr int kindInteger = 0x1;
constexpr int kindReal = 0x2;
constexpr int kindDate = 0x3;
constexpr int kindData = 0x4;
constexpr int kindAscii = 0x5;
constexpr int kindUtf16 = 0x6;
constexpr int kindArray = 0xa;
constexpr int kindDictionary = 0xd;

/// What the first byte of an object says, and where its contents start.
struct Object
{
    int kind = 0;
    quint64 count = 0;
    quint64 start = 0;
};

class Walk
{
public:
    explicit Walk(const QByteArray &bytes)
        : m_bytes(bytes)
    {
    }

    bool run() { return readTrailer() && visit(m_top, 0); }

private:
    bool readTrailer()
    {
        if (m_bytes.size() < headerSize + 1 + trailerSize)
            return false;
        const quint64 trailer = quint64(m_bytes.size() - trailerSize);
        m_offsetSize = byteAt(trailer + 6);
        m_referenceSize = byteAt(trailer + 7);
        m_objects = number(trailer + 8, 8);
        m_top = number(trailer + 16, 8);
        m_table = number(trailer + 24, 8);
        return isWidth(m_offsetSize) && isWidth(m_referenceSize) && m_table >= headerSize &&
               m_table <= trailer && m_objects <= (trailer - m_table) / m_offsetSize;
    }

    bool visit(quint64 reference, int depth)
    {
        Object object;
        if (depth > PropertyListInput::maximumDepth || ++m_visited > PropertyListInput::maximumNodes ||
            !open(reference, object))
            return false;
        switch (object.kind) {
        case kindArray:
            return visitAll(object, object.count, depth);
        case kindDictionary:
            return object.count <= m_table && visitAll(object, 2 * object.count, depth);
        case kindUtf16:
            return object.count <= m_table && takes(object, 2 * object.count);
        default:
            return takes(object, object.count);
        }
    }

    bool visitAll(const Object &object, quint64 members, int depth)
    {
        if (members > m_table || !fits(object.start, members * m_referenceSize))
            return false;
        for (quint64 i = 0; i < members; ++i) {
            if (!visit(number(object.start + i * m_referenceSize, m_referenceSize), depth + 1))
                return false;
        }
        return true;
    }

    /// Shared objects count as often as they are referred to, because Foundation may copy them.
    bool takes(const Object &object, quint64 size)
    {
        if (!fits(object.start, size))
            return false;
        m_written += size;
        return m_written <= quint64(PropertyListInput::maximumBytes);
    }

    bool open(quint64 reference, Object &object) const
    {
        if (reference >= m_objects)
            return false;
        const quint64 offset = number(m_table + reference * m_offsetSize, m_offsetSize);
        if (offset < headerSize || !fits(offset, 1))
            return false;
        object.kind = int(byteAt(offset) >> 4);
        object.count = byteAt(offset) & 0xf;
        object.start = offset + 1;
        switch (object.kind) {
        case 0:
            object.count = 0;
            return true;
        case kindInteger:
        case kindReal:
        case kindDate:
            object.count = object.count <= 4 ? quint64(1) << object.count : m_table;
            return true;
        case kindData:
        case kindAscii:
        case kindUtf16:
        case kindArray:
        case kindDictionary:
            return object.count < 0xf || readLongCount(object);
        default:
            return false;
        }
    }

    /// A count of 15 or more follows as an integer object.
    bool readLongCount(Object &object) const
    {
        if (!fits(object.start, 1) || byteAt(object.start) >> 4 != kindInteger)
            return false;
        const quint64 exponent = byteAt(object.start) & 0xf;
        if (exponent > 3 || !fits(object.start + 1, quint64(1) << exponent))
            return false;
        const quint64 width = quint64(1) << exponent;
        object.count = number(object.start + 1, width);
        object.start += 1 + width;
        return true;
    }

    static bool isWidth(quint64 width) { return width >= 1 && width <= 8; }

    /// Everything but the offsets themselves lies in front of their table.
    bool fits(quint64 start, quint64 size) const { return start <= m_table && size <= m_table - start; }

    quint64 byteAt(quint64 offset) const { return static_cast<unsigned char>(m_bytes.at(int(offset))); }

    quint64 number(quint64 offset, quint64 width) const
    {
        quint64 value = 0;
        for (quint64 i = 0; i < width; ++i)
            value = value << 8 | byteAt(offset + i);
        return value;
    }

    const QByteArray &m_bytes;
    quint64 m_offsetSize = 0;
    quint64 m_referenceSize = 0;
    quint64 m_objects = 0;
    quint64 m_top = 0;
    quint64 m_table = 0;
    quint64 m_written = 0;
    int m_visited = 0;
};

} // namespace

bool BinaryPropertyList::isBinary(const QByteArray &bytes)
{
    return bytes.startsWith("bplist");
}

QString BinaryPropertyList::problemOf(const QByteArray &bytes)
{
    return Walk(bytes).run() ? QString()
                             : QStringLiteral("it is a damaged binary property list, or holds too much");
}
