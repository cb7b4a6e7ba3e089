// SPDX-License-Identifier: Apache-2.0
#include "hosttools/productsign/TocEdit.h"

#include "hosttools/base/Error.h"

#include <QVector>

#include <algorithm>
#include <cstring>
#include <expat.h>
#include <limits>
#include <memory>

using namespace FlatPkg;

/// One pass over the text that notes at which bytes things stand.
class TocEdit::Survey
{
public:
    explicit Survey(TocEdit *edit);

    /// Where the digest and the signatures end in the heap.
    qint64 run();

private:
    static void XMLCALL onStart(void *survey, const XML_Char *name, const XML_Char **)
    {
        const char *colon = std::strrchr(name, ':');
        static_cast<Survey *>(survey)->start(colon ? colon + 1 : name);
    }
    static void XMLCALL onEnd(void *survey, const XML_Char *) { static_cast<Survey *>(survey)->end(); }

    void start(const QByteArray &name);
    void end();
    void endData();
    void endNumber(const QByteArray &name, const QByteArray &owner);
    bool isOfToc(int depth) const { return m_path.size() == depth && m_path.value(1) == "toc"; }
    bool isData(int depth) const;
    qint64 here() const { return XML_GetCurrentByteIndex(m_parser.get()); }
    qint64 behind() const { return here() + XML_GetCurrentByteCount(m_parser.get()); }
    qint64 number(const Span &text);

    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> m_parser;
    TocEdit *m_edit;
    QVector<QByteArray> m_path;
    qint64 m_elementStart = 0; ///< of the checksum or signature that is read
    qint64 m_textStart = 0;    ///< of the innermost element
    Place m_place;
    qint64 m_offset = 0; ///< of the digest or signature that is read
    qint64 m_fixedEnd = 0;
    bool m_isSound = true; ///< nothing may be thrown through Expat
};

namespace {

bool isFixedPart(const QByteArray &name)
{
    return name == "checksum" || name == "signature" || name == "x-signature";
}

bool isBlank(char character)
{
    return character == ' ' || character == '\n' || character == '\t' || character == '\r';
}

qint64 behindBlanks(const QByteArray &text, qint64 at)
{
    while (at < text.size() && isBlank(text.at(static_cast<int>(at))))
        ++at;
    return at;
}

/// What an earlier signing has put behind the table.
QByteArray withoutBlankLines(QByteArray text)
{
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text + '\n';
}

[[noreturn]] void refuse(const QByteArray &what)
{
    throw Error(what + "; the package is damaged, get it again from where it came");
}

} // namespace

TocEdit::Survey::Survey(TocEdit *edit)
    : m_parser(XML_ParserCreate("UTF-8"), XML_ParserFree)
    , m_edit(edit)
{
    XML_SetUserData(m_parser.get(), this);
    XML_SetElementHandler(m_parser.get(), onStart, onEnd);
}

qint64 TocEdit::Survey::run()
{
    const QByteArray &xml = m_edit->m_xml;
    if (XML_Parse(m_parser.get(), xml.constData(), static_cast<int>(xml.size()), 1) != XML_STATUS_OK)
        refuse("its table of contents cannot be read");
    if (!m_isSound)
        refuse("its table of contents does not say where its members lie");
    return m_fixedEnd;
}

/// The bytes of a member or of one of its extended attributes.
bool TocEdit::Survey::isData(int depth) const
{
    const QByteArray name = m_path.value(depth - 1);
    return m_path.size() >= depth && depth > 2 && m_path.value(depth - 2) == "file" &&
           (name == "data" || name == "ea");
}

void TocEdit::Survey::start(const QByteArray &name)
{
    m_path.append(name);
    m_textStart = behind();
    const int depth = static_cast<int>(m_path.size());
    if (isOfToc(2))
        m_edit->m_elementsAt = behind();
    if (isOfToc(3) && isFixedPart(name))
        m_elementStart = here();
    if (isData(depth))
        m_place = Place{{}, 0, 0, name == "data"};
}

void TocEdit::Survey::end()
{
    const int depth = static_cast<int>(m_path.size());
    const QByteArray name = m_path.last();
    if (isOfToc(3) && isFixedPart(name))
        m_edit->m_removed.push_back({m_elementStart, behindBlanks(m_edit->m_xml, behind())});
    else if (isData(depth))
        endData();
    else if (name == "offset" || name == "length" || name == "size")
        endNumber(name, m_path.value(depth - 2));
    m_path.removeLast();
}

void TocEdit::Survey::endData()
{
    const bool saysWhere = m_place.offsetText.end > 0;
    m_isSound = m_isSound && (saysWhere || m_place.length == 0);
    if (saysWhere)
        m_edit->m_places.push_back(m_place);
}

void TocEdit::Survey::endNumber(const QByteArray &name, const QByteArray &owner)
{
    const Span text{m_textStart, here()};
    if (isOfToc(4) && isFixedPart(owner)) {
        if (name == "offset")
            m_offset = number(text);
        else if (name == "size")
            m_fixedEnd = std::max(m_fixedEnd, m_offset + number(text));
    } else if (isData(static_cast<int>(m_path.size()) - 1)) {
        if (name == "length")
            m_place.length = number(text);
        if (name != "offset")
            return;
        m_place.offset = number(text);
        m_place.offsetText = text;
    }
}

/// At most half of what fits, so that the sum of two does.
qint64 TocEdit::Survey::number(const Span &text)
{
    const auto length = static_cast<int>(text.end - text.start);
    bool isNumber = false;
    const qint64 value =
        m_edit->m_xml.mid(static_cast<int>(text.start), length).trimmed().toLongLong(&isNumber);
    isNumber = isNumber && value >= 0 && value <= std::numeric_limits<qint64>::max() / 2;
    m_isSound = m_isSound && isNumber;
    return isNumber ? value : 0;
}

TocEdit::TocEdit(const QByteArray &xml)
    : m_xml(withoutBlankLines(xml))
{
    measure(Survey(this).run());
}

/// What extended attributes claim in front of the members is nothing of theirs, and stays unread.
void TocEdit::measure(qint64 fixedEnd)
{
    m_first = std::numeric_limits<qint64>::max();
    for (const Place &place : m_places) {
        if (place.length == 0)
            continue;
        if (place.offset < fixedEnd && place.isMember)
            refuse("a member lies where its checksum and signatures are");
        if (place.offset >= fixedEnd)
            m_first = std::min(m_first, place.offset);
        m_end = std::max(m_end, place.offset + place.length);
    }
    if (m_end <= m_first)
        throw Error("holds no member that could be signed");
}

QByteArray TocEdit::text(const QByteArray &elements, qint64 first) const
{
    QVector<std::pair<Span, QByteArray>> edits{{{m_elementsAt, m_elementsAt}, elements}};
    for (const Span &removed : m_removed)
        edits.append({removed, {}});
    for (const Place &place : m_places) {
        if (isMoved(place))
            edits.append({place.offsetText, QByteArray::number(place.offset - m_first + first)});
    }
    std::stable_sort(edits.begin(), edits.end(),
                     [](const auto &a, const auto &b) { return a.first.start < b.first.start; });
    QByteArray edited;
    qint64 at = 0;
    for (const auto &[span, replacement] : edits) {
        edited.append(m_xml.constData() + at, static_cast<int>(span.start - at)).append(replacement);
        at = span.end;
    }
    return edited.append(m_xml.constData() + at, static_cast<int>(m_xml.size() - at));
}
