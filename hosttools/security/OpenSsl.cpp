// SPDX-License-Identifier: Apache-2.0
#include "hosttools/security/OpenSsl.h"

#include "hosttools/base/Error.h"

#include <QString>

#include <openssl/err.h>

namespace OpenSsl {

void fail(const QByteArray &what)
{
    const char *reason = ERR_reason_error_string(ERR_peek_last_error());
    ERR_clear_error();
    const QByteArray detail = reason ? QByteArray(" (") + reason + ')' : QByteArray();
    throw FlatPkg::Error(what + detail);
}

QByteArray bytesIn(BIO *memory)
{
    char *bytes = nullptr;
    const long size = BIO_get_mem_data(memory, &bytes);
    return QByteArray(bytes, static_cast<int>(size));
}

QByteArray commonName(const X509 *certificate)
{
    const X509_NAME *subject = X509_get_subject_name(certificate);
    const int index = X509_NAME_get_index_by_NID(subject, NID_commonName, -1);
    if (index < 0)
        return {};
    unsigned char *text = nullptr;
    const int size =
        ASN1_STRING_to_UTF8(&text, X509_NAME_ENTRY_get_data(X509_NAME_get_entry(subject, index)));
    if (size < 0)
        return {};
    const QByteArray name(reinterpret_cast<const char *>(text), size);
    OPENSSL_free(text);
    return name;
}

} // namespace OpenSsl
