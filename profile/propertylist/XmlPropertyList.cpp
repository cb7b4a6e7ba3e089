// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/PropertyListFormats.h"

#include "config/XmlStream.h"
#include "core/PrintableText.h"

#include <QDateTime>
#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace {

using PropertyList::Scalar;

enum class Kind { Document, List, Dictionary, Array, Key, Text, Integer, Real, Date, Data, True, False };

const QHash<QString, Kind> &kinds()
{
    static const QHash<QString, Kind> names{
        {QStringLiteral("plist"), Kind::List},  {QStringLiteral("dict"), Kind::Dictionary},
        {QStringLiteral("array"), Kind::Array}, {QStringLiteral("key"), Kind::Key},
        {QStringLiteral("string"), Kind::Text}, {QStringLiteral("integer"), Kind::Integer},
        {QStringLiteral("real"), Kind::Real},   {QStringLiteral("date"), Kind::Date},
        {QStringLiteral("data"), Kind::Data},   {QStringLiteral("true"), Kind::True},
        {QStringLiteral("false"), Kind::False}};
    return names;
}

/// An element that has begun.
struct Level
{
    Kind kind = Kind::Document;
    bool wantsValue = false; ///< a dictionary behind a key
    int values = 0;

    bool isContainer() const { return kind <= Kind::Array; }
    bool wantsKey() const { return kind == Kind::Dictionary && !wantsValue; }
    bool isFull() const { return (kind == Kind::Document || kind == Kind::List) && values > 0; }
};

bool isBlank(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\n') ||
               c == QLatin1Char('\r');
    });
}

std::optional<Scalar> negated(quint64 magnitude)
{
    const quint64 most = static_cast<quint64>(std::numeric_limits<qint64>::max()) + 1;
    if (magnitude > most)
        return std::nullopt;
    return magnitude == most ? std::numeric_limits<qint64>::min() : -static_cast<qint64>(magnitude);
}

Scalar counted(quint64 magnitude)
{
    if (magnitude > static_cast<quint64>(std::numeric_limits<qint64>::max()))
        return magnitude;
    return static_cast<qint64>(magnitude);
}

/// Nothing for text that is no such word.
std::optional<double> specialReal(const QString &text)
{
    static const QRegularExpression infinity(
        QRegularExpression::anchoredPattern(QStringLiteral("([-+]?)inf(inity)?")),
        QRegularExpression::CaseInsensitiveOption);
    if (text.compare(QLatin1String("nan"), Qt::CaseInsensitive) == 0)
        return std::numeric_limits<double>::quiet_NaN();
    const QRegularExpressionMatch match = infinity.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const double endless = std::numeric_limits<double>::infinity();
    return match.captured(1) == QLatin1String("-") ? -endless : endless;
}

/// Decimal or hexadecimal, of at most 64 bits with or without a sign; white space may stand in front.
std::optional<Scalar> integerIn(const QString &text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        QStringLiteral("\\s*([-+]?)\\s*(?:0[xX]([0-9a-fA-F]+)|([0-9]+))")));
    const QRegularExpressionMatch match = form.match(text);
    const bool isHexadecimal = !match.captured(2).isEmpty();
    bool fits = false;
    const quint64 magnitude =
        isHexadecimal ? match.captured(2).toULongLong(&fits, 16) : match.captured(3).toULongLong(&fits, 10);
    if (!fits)
        return std::nullopt;
    return match.captured(1) == QLatin1String("-") ? negated(magnitude) : counted(magnitude);
}

/// Decimal, "nan", or infinity in the usual spellings.
std::optional<Scalar> realIn(const QString &text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        QStringLiteral("\\s*[-+]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][-+]?[0-9]+)?")));
    if (const std::optional<double> special = specialReal(text))
        return *special;
    // What is too large becomes infinite.
    return form.match(text).hasMatch() ? std::optional<Scalar>(text.trimmed().toDouble()) : std::nullopt;
}

/// YYYY-MM-DDThh:mm:ssZ. A day that no calendar has is a date, too.
std::optional<Scalar> dateIn(const QString &text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        QStringLiteral("-?[0-9]+-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z")));
    if (!form.match(text).hasMatch())
        return std::nullopt;
    // Of what is no day it gives 0.
    const QDateTime date = QDateTime::fromString(text, Qt::ISODate);
    return PropertyList::Date{static_cast<double>(date.toSecsSinceEpoch())};
}

/// Base64; what is none of its characters is passed over.
Scalar dataIn(const QString &text)
{
    return QByteArray::fromBase64(text.toLatin1());
}

/// Nothing when the text is no value of the kind.
std::optional<Scalar> scalarOf(Kind kind, const QString &text)
{
    switch (kind) {
    case Kind::Integer:
        return integerIn(text);
    case Kind::Real:
        return realIn(text);
    case Kind::Date:
        return dateIn(text);
    case Kind::Data:
        return dataIn(text);
    case Kind::True:
    case Kind::False:
        return text.isEmpty() ? std::optional<Scalar>(kind == Kind::True) : std::nullopt;
    default:
        return text;
    }
}

Problem refusal(const QString &text)
{
    return {{}, text};
}

class Reader : public XmlStream::Handler
{
public:
    explicit Reader(PropertyList::Sink &sink)
        : m_sink(sink)
    {
    }

    void begin(const XmlStream::Locator &locator) override { m_locator = &locator; }

    Result<> documentType(const QString & /*name*/) override { return {}; }

    Result<> startElement(const QString &name, const QVector<XmlStream::Attribute> & /*attributes*/) override
    {
        const auto kind = kinds().constFind(name);
        if (kind == kinds().constEnd())
            return refusal(
                QStringLiteral("property lists have no element \"%1\"").arg(printableStart(name, 64)));
        Result<> fits = check(*kind);
        if (fits)
            begin(*kind);
        return fits;
    }

    Result<> emptyTag() override
    {
        // No data at all takes two tags for Foundation.
        const bool isData = m_levels.last().kind == Kind::Data;
        return isData ? refusal(QStringLiteral("<data/> is not valid")) : Result<>();
    }

    Result<> endElement() override
    {
        const Level level = m_levels.takeLast();
        if (level.kind == Kind::List)
            return level.values == 0 ? refusal(QStringLiteral("the list holds no value")) : Result<>();
        if (level.wantsValue)
            return refusal(QStringLiteral("a key has no value"));
        if (!level.isContainer())
            return endScalar(level.kind);
        m_sink.end();
        return {};
    }

    Result<> text(const QString &text) override
    {
        if (!m_levels.last().isContainer())
            m_text += text;
        else if (!isBlank(text))
            return refusal(QStringLiteral("there is text between the elements"));
        return {};
    }

    Result<> comment(const QString & /*text*/) override { return interruption(); }

    Result<> processingInstruction(const QString & /*target*/, const QString & /*data*/) override
    {
        return interruption();
    }

private:
    Result<> check(Kind kind) const
    {
        const Level &outer = m_levels.last();
        if (!outer.isContainer())
            return refusal(QStringLiteral("an element stands inside a value"));
        if (outer.isFull())
            return refusal(QStringLiteral("the list holds more than one value"));
        if (outer.wantsKey() && kind != Kind::Key)
            return refusal(QStringLiteral("a value has no key"));
        return {};
    }

    void begin(Kind kind)
    {
        Level &outer = m_levels.last();
        m_isKey = outer.wantsKey();
        outer.wantsValue = outer.wantsKey();
        ++outer.values;
        m_levels.append({kind});
        m_text.clear();
        m_sink.at(m_locator->place());
        if (kind == Kind::Dictionary)
            m_sink.beginDictionary();
        else if (kind == Kind::Array)
            m_sink.beginArray();
    }

    Result<> endScalar(Kind kind)
    {
        const std::optional<Scalar> value = scalarOf(kind, m_text);
        if (!value)
            return refusal(QStringLiteral("\"%1\" is not valid in <%2>")
                               .arg(printableStart(m_text, 64), kinds().key(kind)));
        if (m_isKey)
            m_sink.key(m_text);
        else
            m_sink.scalar(*value);
        return {};
    }

    Result<> interruption() const
    {
        return m_levels.last().isContainer() ? Result<>() : refusal(QStringLiteral("a value is interrupted"));
    }

    PropertyList::Sink &m_sink;
    const XmlStream::Locator *m_locator = nullptr;
    QVector<Level> m_levels{Level()};
    QString m_text; ///< of the value that has begun
    bool m_isKey = false;
};

} // namespace

Result<> XmlPropertyList::read(const QByteArray &xml, PropertyList::Sink &sink)
{
    Reader reader(sink);
    return XmlStream::read(xml, reader, {PropertyListInput::maximumBytes, PropertyListInput::maximumNodes});
}
