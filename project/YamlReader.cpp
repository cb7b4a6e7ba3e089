// SPDX-License-Identifier: Apache-2.0
#include "project/YamlReader.h"

#include "core/PrintableText.h"
#include "project/PlacedProblem.h"

#include <QSet>

#include <libfyaml.h>
#include <memory>
#include <optional>

namespace {

using Json::Place;
using Json::Type;
using Json::Value;

template <auto Free> struct Deleter
{
    template <typename Object> void operator()(Object *object) const { Free(object); }
};

using Diagnostics = std::unique_ptr<fy_diag, Deleter<fy_diag_destroy>>;
using Parser = std::unique_ptr<fy_parser, Deleter<fy_parser_destroy>>;

void saySoLater(fy_diag *, void *, const char *, size_t) {}

Diagnostics collectingDiagnostics()
{
    fy_diag_cfg configuration;
    fy_diag_cfg_default(&configuration);
    configuration.fp = nullptr;
    configuration.output_fn = saySoLater;
    configuration.colorize = false;
    Diagnostics diagnostics(fy_diag_create(&configuration));
    if (diagnostics)
        fy_diag_set_collect_errors(diagnostics.get(), true);
    return diagnostics;
}

/// A quoted text, an anchor or an alias begins at its sign, not behind it.
Place placeOf(const fy_mark *mark, const QByteArray &bytes)
{
    if (!mark)
        return {};
    const auto before = static_cast<int>(mark->input_pos) - 1;
    const bool isBehindSign = before >= 0 && before < bytes.size() && mark->column > 0 &&
                              QByteArray("\"'&*").contains(bytes.at(before));
    return {mark->line + 1, mark->column + (isBehindSign ? 0 : 1)};
}

QString textOf(fy_token *token)
{
    size_t length = 0;
    const char *text = fy_token_get_text(token, &length);
    return text ? QString::fromUtf8(text, static_cast<int>(length)) : QString();
}

bool isNull(fy_token *scalar, const QString &text)
{
    const bool isPlain = fy_token_scalar_style(scalar) == FYSS_PLAIN;
    return isPlain && (text.isEmpty() || text == QLatin1String("null") || text == QLatin1String("~"));
}

class Reading
{
public:
    explicit Reading(const QByteArray &bytes)
        : m_bytes(bytes)
        , m_diagnostics(collectingDiagnostics())
    {
        fy_parse_cfg configuration = {};
        configuration.flags = static_cast<fy_parse_cfg_flags>(FYPCF_DEFAULT_PARSE);
        configuration.diag = m_diagnostics.get();
        m_parser.reset(fy_parser_create(&configuration));
        if (m_parser && fy_parser_set_string(m_parser.get(), bytes.constData(), bytes.size()) != 0)
            m_parser.reset();
    }

    Result<Value> run()
    {
        Value value;
        if (!m_parser)
            fail({}, QStringLiteral("there is not enough memory to read it"));
        readDocument(value);
        if (m_problem)
            return *m_problem;
        return value;
    }

private:
    bool goesOn() const { return !m_problem; }

    void fail(const Place &place, const QString &what)
    {
        if (!m_problem)
            m_problem = problemAt(place, what);
    }

    fy_event_type type() const { return m_event ? m_event->type : FYET_NONE; }

    /// Steps to the next event; there is none after a problem.
    void advance()
    {
        release();
        if (!goesOn())
            return;
        m_event = fy_parser_parse(m_parser.get());
        if (fy_diag_got_error(m_diagnostics.get()))
            failByParser();
        else if (m_event)
            refuseReferences();
    }

    void release()
    {
        if (m_event)
            fy_parser_event_free(m_parser.get(), m_event);
        m_event = nullptr;
    }

    void failByParser()
    {
        void *previous = nullptr;
        const fy_diag_error *error = fy_diag_errors_iterate(m_diagnostics.get(), &previous);
        if (error)
            fail({error->line, error->column}, printableStart(QString::fromUtf8(error->msg), 200));
        else
            fail({}, QStringLiteral("it is no YAML"));
    }

    Place place() const { return placeOf(fy_event_start_mark(m_event), m_bytes); }

    void refuseReferences()
    {
        if (type() == FYET_ALIAS)
            fail(place(), QStringLiteral("aliases are not taken; write the value out"));
        if (fy_token *anchor = fy_event_get_anchor_token(m_event); anchor && goesOn())
            fail(placeOf(fy_token_start_mark(anchor), m_bytes),
                 QStringLiteral("anchors are not taken; write the value out where it is needed"));
        if (fy_token *tag = fy_event_get_tag_token(m_event); tag && goesOn())
            fail(placeOf(fy_token_start_mark(tag), m_bytes),
                 QStringLiteral("tags are not taken; what a value is follows from where it stands"));
    }

    void readDocument(Value &value)
    {
        advance();
        advance();
        if (goesOn() && type() != FYET_DOCUMENT_START)
            fail({1, 1}, QStringLiteral("it is empty"));
        advance();
        if (goesOn())
            readValue(value);
        advance();
        if (goesOn() && type() == FYET_DOCUMENT_START)
            fail(place(), QStringLiteral("a second document begins here; only one is taken"));
        release();
    }

    /// Reads what the current event begins and steps behind it.
    void readValue(Value &value)
    {
        value.place = place();
        if (type() == FYET_MAPPING_START)
            readAll(value, Type::Object, FYET_MAPPING_END);
        else if (type() == FYET_SEQUENCE_START)
            readAll(value, Type::List, FYET_SEQUENCE_END);
        else
            readScalar(value);
    }

    void readScalar(Value &value)
    {
        if (type() != FYET_SCALAR)
            return fail(place(), QStringLiteral("a value is missing"));
        value.text = textOf(m_event->scalar.value);
        value.type = isNull(m_event->scalar.value, value.text) ? Type::Null : Type::Text;
        advance();
    }

    void readAll(Value &value, Type kind, fy_event_type end)
    {
        value.type = kind;
        if (++m_depth > Yaml::maximumDepth)
            return fail(value.place, QStringLiteral("nested deeper than %1").arg(Yaml::maximumDepth));
        QSet<QString> names;
        advance();
        while (goesOn() && type() != end)
            readItem(value, names);
        --m_depth;
        advance();
    }

    void readItem(Value &parent, QSet<QString> &names)
    {
        Value item;
        if (parent.type == Type::Object)
            readName(item, names);
        if (goesOn())
            readValue(item);
        parent.values.push_back(std::move(item));
    }

    void readName(Value &item, QSet<QString> &names)
    {
        item.namePlace = place();
        if (type() != FYET_SCALAR)
            return fail(item.namePlace, QStringLiteral("a name is a word, not a list or a mapping"));
        item.name = textOf(m_event->scalar.value);
        if (names.contains(item.name))
            return fail(item.namePlace,
                        QStringLiteral("\"%1\" stands there twice").arg(printableStart(item.name, 64)));
        names.insert(item.name);
        advance();
    }

    const QByteArray &m_bytes;
    Diagnostics m_diagnostics;
    Parser m_parser;
    fy_event *m_event = nullptr;
    int m_depth = 0;
    std::optional<Problem> m_problem;
};

/// The reader of YAML takes a NUL for the end in some places.
Result<> checkBytes(const QByteArray &bytes)
{
    if (bytes.size() > Yaml::maximumBytes)
        return problemAt({},
                         QStringLiteral("it is larger than %1 MiB").arg(Yaml::maximumBytes / (1024 * 1024)));
    if (const auto nul = bytes.indexOf('\0'); nul >= 0)
        return problemAt({static_cast<int>(bytes.left(nul).count('\n')) + 1,
                          static_cast<int>(nul - bytes.left(nul).lastIndexOf('\n'))},
                         QStringLiteral("there is a NUL"));
    const QByteArray mark = bytes.startsWith("\xef\xbb\xbf") ? bytes.left(3) : QByteArray();
    if (mark + QString::fromUtf8(bytes).toUtf8() != bytes)
        return problemAt({}, QStringLiteral("it is not in UTF-8"));
    return {};
}

} // namespace

Result<Json::Value> Yaml::read(const QByteArray &bytes)
{
    if (const Result<> sound = checkBytes(bytes); !sound)
        return sound.problem();
    return Reading(bytes).run();
}
