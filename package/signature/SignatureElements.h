// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>

#include <expat.h>
#include <limits>
#include <memory>
#include <optional>

/// A place in the heap of an archive; numbers that are none become places that cannot be.
struct HeapPlace
{
    qint64 offset = -1;
    qint64 size = 0;
};

/// What the table of contents says of a signature.
struct SignatureElement
{
    HeapPlace place;
    QList<QByteArray> certificates; ///< DER, the first ones
    bool hasTooManyCertificates = false;
};

/// Reads the signatures out of a table of contents that arrives in pieces; nothing else of it is kept. Of
/// elements that stand there twice the first counts.
class SignatureElements
{
public:
    SignatureElements();
    SignatureElements(const SignatureElements &) = delete;
    SignatureElements &operator=(const SignatureElements &) = delete;

    /// False from the first piece on that is not well-formed, nests too deeply or has a document type
    /// definition.
    bool add(const char *bytes, int count);
    /// Whether all of the document has been read.
    bool finish();

    QByteArray digestStyle;
    HeapPlace digest;
    std::optional<SignatureElement> rsa;
    std::optional<SignatureElement> cms;
    qint64 firstMember = std::numeric_limits<qint64>::max(); ///< where the first byte of any member lies

private:
    static void XMLCALL onStart(void *self, const XML_Char *name, const XML_Char **attributes);
    static void XMLCALL onEnd(void *self, const XML_Char *name);
    static void XMLCALL onCharacters(void *self, const XML_Char *text, int length);
    static void XMLCALL onDoctype(void *self, const XML_Char *, const XML_Char *, const XML_Char *, int);

    void start(const QByteArray &name, const XML_Char **attributes);
    void end();
    void startPart(const QByteArray &name, const XML_Char **attributes);
    void startPlace(HeapPlace *place, const QByteArray &sizeName);
    void endNumber(const QByteArray &name);
    void endPlace();
    void endCertificate();

    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> m_parser;
    QList<QByteArray> m_path;
    SignatureElement *m_element = nullptr; ///< that is read
    HeapPlace *m_place = nullptr;          ///< that is read
    HeapPlace m_member;                    ///< of the member that is read
    int m_placeDepth = 0;                  ///< of the element that says where it is
    QByteArray m_sizeName;                 ///< what that calls the size in the heap
    QByteArray m_text;
    bool m_keepsText = false;
};
