// SPDX-License-Identifier: Apache-2.0
#include "app/Messages.h"

#include "core/PrintableText.h"

#include <cstring>

namespace {

/// A run that goes wrong again and again must not fill the memory.
constexpr int mostMessages = 1000;

QtMessageHandler handlerBefore = nullptr;

bool isOurs(const QMessageLogContext &context)
{
    return context.category && std::strncmp(context.category, "pct.", 4) == 0;
}

} // namespace

Messages &Messages::ofThisRun()
{
    // Never deleted: what ends the process may log as well.
    static auto *const messages = new Messages;
    return *messages;
}

Messages::Messages()
{
    handlerBefore =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &context, const QString &text) {
            handlerBefore(type, context, text);
            if (type == QtDebugMsg || type == QtInfoMsg || !isOurs(context))
                return;
            const Message message{QDateTime::currentDateTime(), visibleLines(text), QString()};
            Messages &messages = ofThisRun();
            QMetaObject::invokeMethod(&messages, [&messages, message] { messages.add(message); });
        });
}

void Messages::tell(const QString &text, const QString &file)
{
    add({QDateTime::currentDateTime(), text, file});
}

void Messages::add(const Message &message)
{
    if (m_all.size() == mostMessages)
        m_all.removeFirst();
    m_all.append(message);
    emit added(message);
}
