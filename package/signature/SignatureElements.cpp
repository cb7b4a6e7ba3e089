// SPDX-License-Identifier: Apache-2.0
#include "package/signature/SignatureElements.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int deepest = 256;
constexpr int mostCertificates = 32;
constexpr int longestText = 512 * 1024; ///< of a certificate in Base64

SignatureElements &of(void *self)
{
    return *static_cast<SignatureElements *>(self);
}

qint64 numberIn(const QByteArray &text)
{
    bool isNumber = false;
    const qint64 number = text.trimmed().toLongLong(&isNumber);
    constexpr qint64 largest = Q_INT64_C(1) << 60;
    return isNumber && number >= 0 && number < largest ? number : -1;
}

QByteArray attributeOf(const XML_Char **attributes, const char *name)
{
    for (; *attributes; attributes += 2) {
        if (qstrcmp(*attributes, name) == 0)
            return QByteArray(attributes[1]).toLower();
    }
    return {};
}

} // namespace

SignatureElements::SignatureElements()
    : m_parser(XML_ParserCreate("UTF-8"), XML_ParserFree)
{
    XML_SetUserData(m_parser.get(), this);
    XML_SetElementHandler(m_parser.get(), onStart, onEnd);
    XML_SetCharacterDataHandler(m_parser.get(), onCharacters);
    XML_SetStartDoctypeDeclHandler(m_parser.get(), onDoctype);
}

bool SignatureElements::add(const char *bytes, int count)
{
    return XML_Parse(m_parser.get(), bytes, count, 0) == XML_STATUS_OK;
}

bool SignatureElements::finish()
{
    return XML_Parse(m_parser.get(), "", 0, 1) == XML_STATUS_OK;
}

void SignatureElements::onStart(void *self, const XML_Char *name, const XML_Char **attributes)
{
    const char *colon = std::strrchr(name, ':');
    of(self).start(colon ? colon + 1 : name, attributes);
}

void SignatureElements::onEnd(void *self, const XML_Char *)
{
    of(self).end();
}

void SignatureElements::onCharacters(void *self, const XML_Char *text, int length)
{
    SignatureElements &elements = of(self);
    if (elements.m_keepsText && elements.m_text.size() <= longestText)
        elements.m_text.append(text, length);
}

void SignatureElements::onDoctype(void *self, const XML_Char *, const XML_Char *, const XML_Char *, int)
{
    XML_StopParser(of(self).m_parser.get(), XML_FALSE);
}

void SignatureElements::start(const QByteArray &name, const XML_Char **attributes)
{
    m_path.append(name);
    if (m_path.size() > deepest)
        XML_StopParser(m_parser.get(), XML_FALSE);
    const auto depth = m_path.size();
    if (depth == 3 && m_path.at(1) == "toc")
        startPart(name, attributes);
    if (depth > 3 && name == "data" && m_path.at(depth - 2) == "file")
        startPlace(&m_member, QByteArrayLiteral("length"));
    m_text.clear();
    m_keepsText = m_place && (name == "offset" || name == m_sizeName || name == "X509Certificate");
}

void SignatureElements::startPart(const QByteArray &name, const XML_Char **attributes)
{
    if (name == "checksum" && digestStyle.isEmpty()) {
        digestStyle = attributeOf(attributes, "style");
        startPlace(&digest, QByteArrayLiteral("size"));
    } else if (name == "signature" && !rsa) {
        m_element = &rsa.emplace();
        startPlace(&m_element->place, QByteArrayLiteral("size"));
    } else if (name == "x-signature" && !cms) {
        m_element = &cms.emplace();
        startPlace(&m_element->place, QByteArrayLiteral("size"));
    }
}

void SignatureElements::startPlace(HeapPlace *place, const QByteArray &sizeName)
{
    *place = HeapPlace();
    m_place = place;
    m_placeDepth = static_cast<int>(m_path.size());
    m_sizeName = sizeName;
}

void SignatureElements::end()
{
    const QByteArray name = m_path.takeLast();
    if (m_place && m_path.size() == m_placeDepth)
        endNumber(name);
    if (m_element && name == "X509Certificate")
        endCertificate();
    if (m_place && m_path.size() < m_placeDepth)
        endPlace();
    m_keepsText = false;
}

void SignatureElements::endPlace()
{
    if (m_place == &m_member && m_member.size > 0 && m_member.offset >= 0)
        firstMember = std::min(firstMember, m_member.offset);
    m_element = nullptr;
    m_place = nullptr;
}

void SignatureElements::endNumber(const QByteArray &name)
{
    if (name == "offset")
        m_place->offset = numberIn(m_text);
    else if (name == m_sizeName)
        m_place->size = numberIn(m_text);
}

void SignatureElements::endCertificate()
{
    if (m_text.size() > longestText || m_element->certificates.size() == mostCertificates)
        m_element->hasTooManyCertificates = true;
    else
        m_element->certificates.append(QByteArray::fromBase64(m_text));
}
