// SPDX-License-Identifier: Apache-2.0
#include "core/Logging.h"

#include "core/PrintableText.h"

Q_LOGGING_CATEGORY(logCore, "pct.core")
Q_LOGGING_CATEGORY(logConfig, "pct.config")
Q_LOGGING_CATEGORY(logPackage, "pct.package")
Q_LOGGING_CATEGORY(logProfile, "pct.profile")
Q_LOGGING_CATEGORY(logPages, "pct.pages")
Q_LOGGING_CATEGORY(logWelcome, "pct.welcome")
Q_LOGGING_CATEGORY(logApp, "pct.app")

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
