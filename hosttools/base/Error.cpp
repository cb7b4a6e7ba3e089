// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/Error.h"

#include <QString>

#include <cerrno>
#include <cstring>

namespace FlatPkg {

namespace {

bool isUnsafe(QChar character)
{
    const ushort code = character.unicode();
    const bool bidirectional = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return character.category() == QChar::Other_Control || bidirectional || code == 0x2028 || code == 0x2029;
}

QString visible(QChar character)
{
    return isUnsafe(character)
               ? QStringLiteral("\\u%1").arg(uint{character.unicode()}, 4, 16, QLatin1Char('0'))
               : QString(character);
}

} // namespace

Error Error::within(const QByteArray &context) const
{
    return Error(context + ": " + m_message);
}

Error systemError(const QByteArray &what)
{
    return Error(what + ": " + std::strerror(errno));
}

QByteArray printable(const QByteArray &text)
{
    QString shown;
    // Not the overload for byte arrays, which stops at a NUL.
    for (const QChar character : QString::fromUtf8(text.constData(), text.size()))
        shown += visible(character);
    return shown.toUtf8();
}

} // namespace FlatPkg
