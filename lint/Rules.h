// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "lint/Subject.h"

#include <QLatin1String>

#include <vector>

// What can be wrong with a file that can be read, or can hardly be meant. One thread.

namespace Lint {

/// An error is of no effect or of another one than it says; a warning most likely so; a note costs nothing.
enum class Severity { Error, Warning, Note };

QLatin1String wordOf(Severity severity);

/// What is wrong at one place, and what to do.
struct Remark
{
    TextPlace place;
    QString text;
};

using Remarks = QVector<Remark>;

/// The start of a text from a file in quotes, for a remark.
QString quoted(const QString &text);

/// That a text, which is called `what`, only looks like another.
Remark lookAlikeRemark(const TextPlace &place, const QString &what, const QString &text,
                       const QString &plain);

struct Rule
{
    QLatin1String code; ///< stays the same from version to version
    Severity severity = Severity::Warning;
    QLatin1String summary; ///< what the rule finds
    QLatin1String advice;
    /// Looks at one file; null for what only the caller can find: unreadable files, and what several share.
    Remarks (*find)(const Subject &subject) = nullptr;
};

/// All rules, errors first.
const std::vector<Rule> &rules();

const Rule &unreadableFile();
const Rule &sharedIdentifier();

struct Finding
{
    const Rule *rule;
    Remark remark;
};

/// What all rules find in a file, in its order; of very many findings the first ones and one that says so.
QVector<Finding> findingsIn(const Subject &subject);

// What the rules of the table find.
Remarks wrongValues(const Subject &subject);
Remarks lookAlikes(const Subject &subject);
Remarks lookAlikeEntries(const Subject &subject);
Remarks lookAlikeCommands(const Subject &subject);
Remarks wrongDomains(const Subject &subject);
Remarks wrongFileTypes(const Subject &subject);
Remarks unknownPlugins(const Subject &subject);
Remarks pluginsOfOtherProduct(const Subject &subject);
Remarks unknownCommands(const Subject &subject);
Remarks unread(const Subject &subject);
Remarks unreadInRibbon(const Subject &subject);
Remarks wrongHidden(const Subject &subject);
Remarks ignoredSettings(const Subject &subject);
Remarks ignoredDomains(const Subject &subject);
Remarks whitelistWithoutDomain(const Subject &subject);
Remarks hiddenRibbon(const Subject &subject);
Remarks repeatedItems(const Subject &subject);
Remarks repeatedEntries(const Subject &subject);

} // namespace Lint
