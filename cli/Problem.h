// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

/// Why something cannot go on: which file, and what is wrong with it and what to do, as one line.
struct Problem
{
    QString file;
    QString text;
};

/// The outcome of a check: a problem, or nothing when all is well.
using Verdict = std::optional<Problem>;
