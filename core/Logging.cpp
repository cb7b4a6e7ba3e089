// SPDX-License-Identifier: Apache-2.0
#include "core/Logging.h"

#include "core/PrintableText.h"

Q_LOGGING_CATEGORY(logCore, "pct.core")

namespace {

QtMessageHandler handlerBefore = nullptr;

void logVisibly(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // What follows a line break must never look like a line of its own.
    handlerBefore(type, context, visibleLines(text).replace(QLatin1Char('\n'), QLatin1String("\n    ")));
}

} // namespace

void showControlCharactersInLog()
{
    handlerBefore = qInstallMessageHandler(logVisibly);
}
