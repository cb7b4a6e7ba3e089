// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What `pct` tells the program that started it.
namespace ExitCode {

constexpr int done = 0;
constexpr int refused = 1; ///< refused or failed; a line on standard error says why
constexpr int usage = 2;   ///< the command line itself is wrong; nothing was looked at

// `pct diff` answers with these, as other programs that compare do.
constexpr int different = 1;
constexpr int trouble = 2;

} // namespace ExitCode
