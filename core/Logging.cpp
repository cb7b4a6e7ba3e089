// SPDX-License-Identifier: Apache-2.0
#include "core/Logging.h"

#include "core/PrintableText.h"

Q_LOGGING_CATEGORY(logCore, "pct.core")

namespace {

QtMessageHandler handlerBefore = nullptr;

void logVisibly(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    handlerBefore(type, context, visibleLogText(text));
}

} // namespace

void showControlCharactersInLog()
{
    handlerBefore = qInstallMessageHandler(logVisibly);
}
