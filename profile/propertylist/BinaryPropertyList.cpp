// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/PropertyListFormats.h"

#include "profile/propertylist/PropertyListInput.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

using PropertyList::Scalar;

constexpr quint64 headerSize = 8;
constexpr quint64 trailerSize = 32;
constexpr double secondsFrom1970To2001 = 978307200;

constexpr int kindSimple = 0x0;
constexpr int kindInteger = 0x1;
constexpr int kindReal = 0x2;
constexpr int kindDate = 0x3;
constexpr int kindData = 0x4;
constexpr int kindAscii = 0x5;
constexpr int kindUtf16 = 0x6;
constexpr int kindUid = 0x8;
constexpr int kindArray = 0xa;
constexpr int kindDictionary = 0xd;

/// The tables of a list, within the limits of its bytes.
class Tables
{
public:
    explicit Tables(const QByteArray &bytes)
        : m_bytes(bytes)
    {
    }

    /// The sizes have to add up to those of the file, and each size to be wide enough for what it counts.
    bool read()
    {
        const auto size = static_cast<quint64>(m_bytes.size());
        if (size < headerSize + 1 + trailerSize)
            return false;
        const quint64 trailer = size - trailerSize;
        m_offsetWidth = byteAt(trailer + 6);
        m_referenceWidth = byteAt(trailer + 7);
        m_objects = number(trailer + 8, 8);
        m_top = number(trailer + 16, 8);
        m_start = number(trailer + 24, 8);
        return isWide(m_offsetWidth, m_start) && isWide(m_referenceWidth, m_objects) &&
               m_start > headerSize && m_start < trailer && m_top < m_objects &&
               m_objects <= (trailer - m_start) / m_offsetWidth &&
               m_objects * m_offsetWidth == trailer - m_start && everyOffsetFits();
    }

    quint64 top() const { return m_top; }
    quint64 referenceWidth() const { return m_referenceWidth; }

    /// Where an object starts; 0 when there is no such object.
    quint64 offsetOf(quint64 reference) const
    {
        if (reference >= m_objects)
            return 0;
        const quint64 offset = number(m_start + reference * m_offsetWidth, m_offsetWidth);
        return offset < headerSize ? 0 : offset;
    }

    /// Everything but the offsets themselves lies in front of their table.
    bool fits(quint64 start, quint64 size) const { return start <= m_start && size <= m_start - start; }

    quint64 byteAt(quint64 offset) const { return static_cast<unsigned char>(m_bytes.at(int(offset))); }

    quint64 number(quint64 offset, quint64 width) const
    {
        quint64 value = 0;
        for (quint64 i = 0; i < width; ++i)
            value = value << 8 | byteAt(offset + i);
        return value;
    }

    QByteArray part(quint64 start, quint64 size) const { return m_bytes.mid(int(start), int(size)); }

private:
    static bool isWide(quint64 width, quint64 largest)
    {
        return width == 8 || (width >= 1 && width < 8 && largest >> (8 * width) == 0);
    }

    bool everyOffsetFits() const
    {
        for (quint64 i = 0; i < m_objects; ++i) {
            if (number(m_start + i * m_offsetWidth, m_offsetWidth) >= m_start)
                return false;
        }
        return true;
    }

    const QByteArray &m_bytes;
    quint64 m_offsetWidth = 0;
    quint64 m_referenceWidth = 0;
    quint64 m_objects = 0;
    quint64 m_top = 0;
    quint64 m_start = 0;
};

/// What the first byte of an object says, and where its contents start.
struct Object
{
    int kind = 0;
    quint64 count = 0;
    quint64 start = 0;
};

/// Shared objects count as often as they are referred to, because each stands for a value of its own.
class Walk
{
public:
    Walk(const QByteArray &bytes, PropertyList::Sink &sink)
        : m_tables(bytes)
        , m_sink(sink)
    {
    }

    bool run() { return m_tables.read() && visit(m_tables.top(), 0); }

private:
    bool visit(quint64 reference, int depth)
    {
        Object object;
        if (depth > PropertyListInput::maximumDepth || ++m_visited > PropertyListInput::maximumNodes ||
            !open(reference, object))
            return false;
        switch (object.kind) {
        case kindArray:
            return visitArray(object, depth);
        case kindDictionary:
            return visitDictionary(object, depth);
        case kindUid:
            return takeUid(object);
        default:
            return takeScalar(object);
        }
    }

    bool visitArray(const Object &array, int depth)
    {
        if (!holds(array, array.count, m_tables.referenceWidth()))
            return false;
        m_sink.beginArray();
        for (quint64 i = 0; i < array.count; ++i) {
            if (!visit(referenceIn(array, i), depth + 1))
                return false;
        }
        m_sink.end();
        return true;
    }

    bool visitDictionary(const Object &dictionary, int depth)
    {
        if (!holds(dictionary, dictionary.count, 2 * m_tables.referenceWidth()))
            return false;
        m_sink.beginDictionary();
        for (quint64 i = 0; i < dictionary.count; ++i) {
            if (!takeKey(referenceIn(dictionary, i)) ||
                !visit(referenceIn(dictionary, dictionary.count + i), depth + 1))
                return false;
        }
        m_sink.end();
        return true;
    }

    bool takeKey(quint64 reference)
    {
        Object object;
        Scalar key;
        if (++m_visited > PropertyListInput::maximumNodes || !open(reference, object) ||
            !(object.kind == kindAscii || object.kind == kindUtf16) || !read(object, key))
            return false;
        m_sink.key(std::get<QString>(key));
        return true;
    }

    bool takeScalar(const Object &object)
    {
        Scalar value;
        if (!read(object, value))
            return false;
        m_sink.scalar(value);
        return true;
    }

    /// The form that it has in XML.
    bool takeUid(const Object &object)
    {
        if (object.count > 4 || !takesBytes(object, object.count))
            return false;
        m_sink.beginDictionary();
        m_sink.key(QStringLiteral("CF$UID"));
        m_sink.scalar(static_cast<qint64>(m_tables.number(object.start, object.count)));
        m_sink.end();
        return true;
    }

    bool open(quint64 reference, Object &object) const
    {
        const quint64 offset = m_tables.offsetOf(reference);
        if (offset == 0 || !m_tables.fits(offset, 1))
            return false;
        object.kind = int(m_tables.byteAt(offset) >> 4);
        object.count = m_tables.byteAt(offset) & 0xf;
        object.start = offset + 1;
        switch (object.kind) {
        case kindSimple:
            return true;
        case kindInteger:
        case kindReal:
        case kindDate:
            object.count = quint64(1) << object.count;
            return true;
        case kindUid:
            ++object.count;
            return true;
        default:
            return object.count < 0xf || readLongCount(object);
        }
    }

    /// A count of 15 or more follows as an integer object.
    bool readLongCount(Object &object) const
    {
        if (!m_tables.fits(object.start, 1) || m_tables.byteAt(object.start) >> 4 != kindInteger)
            return false;
        const quint64 width = quint64(1) << (m_tables.byteAt(object.start) & 0xf);
        if (width > 8 || !m_tables.fits(object.start + 1, width))
            return false;
        object.count = m_tables.number(object.start + 1, width);
        object.start += 1 + width;
        return true;
    }

    bool read(const Object &object, Scalar &value)
    {
        switch (object.kind) {
        case kindSimple:
            return readSimple(object, value);
        case kindInteger:
            return takesBytes(object, object.count) && readInteger(object, value);
        case kindReal:
            return (object.count == 4 || object.count == 8) && takesBytes(object, object.count) &&
                   readReal(object, value);
        case kindDate:
            return object.count == 8 && takesBytes(object, 8) && readDate(object, value);
        case kindData:
            return takesBytes(object, object.count) && readData(object, value);
        case kindAscii:
            return takesBytes(object, object.count) && readAscii(object, value);
        case kindUtf16:
            return holds(object, object.count, 2) && takesBytes(object, 2 * object.count) &&
                   readUtf16(object, value);
        default:
            return false;
        }
    }

    static bool readSimple(const Object &object, Scalar &value)
    {
        constexpr quint64 no = 8;
        constexpr quint64 yes = 9;
        if (object.count == no || object.count == yes)
            value = object.count == yes;
        else
            value = PropertyList::Null();
        return object.count == 0 || object.count == no || object.count == yes;
    }

    /// With 8 bytes an integer has a sign; with 16 it is one that 8 bytes with a sign cannot hold.
    bool readInteger(const Object &object, Scalar &value) const
    {
        if (object.count > 16)
            return false;
        const bool isWide = object.count == 16;
        if (isWide && m_tables.number(object.start, 8) != 0)
            return false;
        const quint64 bits = m_tables.number(object.start + (isWide ? 8 : 0), isWide ? 8 : object.count);
        const bool isLarge = isWide && bits > quint64(std::numeric_limits<qint64>::max());
        value = isLarge ? Scalar(bits) : Scalar(static_cast<qint64>(bits));
        return true;
    }

    bool readReal(const Object &object, Scalar &value) const
    {
        if (object.count == 4)
            value = static_cast<double>(numberAt<float, quint32>(object.start));
        else
            value = numberAt<double, quint64>(object.start);
        return true;
    }

    /// Foundation has no date that is no number, and GNUstep's ends the program over one.
    bool readDate(const Object &object, Scalar &value) const
    {
        const auto seconds = numberAt<double, quint64>(object.start);
        if (std::isnan(seconds))
            return false;
        value = PropertyList::Date{seconds + secondsFrom1970To2001};
        return true;
    }

    template <typename Real, typename Bits> Real numberAt(quint64 start) const
    {
        const auto bits = static_cast<Bits>(m_tables.number(start, sizeof(Bits)));
        Real real = 0;
        std::memcpy(&real, &bits, sizeof real);
        return real;
    }

    bool readData(const Object &object, Scalar &value) const
    {
        value = m_tables.part(object.start, object.count);
        return true;
    }

    bool readAscii(const Object &object, Scalar &value) const
    {
        const QByteArray text = m_tables.part(object.start, object.count);
        value = QString::fromLatin1(text.constData(), text.size());
        return std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
    }

    bool readUtf16(const Object &object, Scalar &value) const
    {
        QString text(static_cast<int>(object.count), Qt::Uninitialized);
        for (int i = 0; i < text.size(); ++i)
            text[i] = QChar(static_cast<ushort>(m_tables.number(object.start + 2 * quint64(i), 2)));
        value = text;
        return true;
    }

    bool takesBytes(const Object &object, quint64 size)
    {
        if (!m_tables.fits(object.start, size))
            return false;
        m_written += size;
        return m_written <= quint64(PropertyListInput::maximumBytes);
    }

    /// Whether so many members of a width lie there; their number alone may be beyond measure.
    bool holds(const Object &object, quint64 members, quint64 width) const
    {
        return members <= quint64(PropertyListInput::maximumBytes) &&
               m_tables.fits(object.start, members * width);
    }

    quint64 referenceIn(const Object &container, quint64 member) const
    {
        const quint64 width = m_tables.referenceWidth();
        return m_tables.number(container.start + member * width, width);
    }

    Tables m_tables;
    PropertyList::Sink &m_sink;
    quint64 m_written = 0;
    int m_visited = 0;
};

} // namespace

bool BinaryPropertyList::isBinary(const QByteArray &bytes)
{
    return bytes.startsWith("bplist0");
}

Result<> BinaryPropertyList::read(const QByteArray &bytes, PropertyList::Sink &sink)
{
    if (Walk(bytes, sink).run())
        return {};
    return Problem{{}, QStringLiteral("it is a damaged binary property list, or holds too much")};
}
