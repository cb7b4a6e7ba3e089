// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/ProjectBuild.h"

#include <QElapsedTimer>
#include <QHash>

class Console;

/// Tells how a project's build gets on: a line for each variant when it has ended, and on a terminal one that
/// changes until then; or objects of JSON, one a line. One thread at a time.
class ProjectProgress
{
public:
    ProjectProgress(Console &console, bool asJson);

    void began(const QString &variant, const QString &step);
    void ended(const VariantOutcome &outcome);

    /// What is left to say when all have ended.
    void finish(const QList<VariantOutcome> &outcomes, const QStringList &stale);

private:
    void clearLine();

    Console &m_console;
    bool m_asJson;
    bool m_isLive; ///< standard error is a terminal that takes control codes
    QHash<QString, QElapsedTimer> m_timers;
};
