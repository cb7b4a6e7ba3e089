// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

// What the folders log, each under a category of its own, so that QT_LOGGING_RULES can pick.

/// Child processes and file operations ("pct.core").
Q_DECLARE_LOGGING_CATEGORY(logCore)

/// The record and the configuration document ("pct.config").
Q_DECLARE_LOGGING_CATEGORY(logConfig)

/// Work on installer packages ("pct.package").
Q_DECLARE_LOGGING_CATEGORY(logPackage)

/// Configuration profiles ("pct.profile"). Debug output of the Cocoa layer follows this category, too.
Q_DECLARE_LOGGING_CATEGORY(logProfile)

/// The pages of the main window ("pct.pages").
Q_DECLARE_LOGGING_CATEGORY(logPages)

/// The pages that open the work ("pct.welcome").
Q_DECLARE_LOGGING_CATEGORY(logWelcome)

/// The windows and their flows ("pct.app").
Q_DECLARE_LOGGING_CATEGORY(logApp)

/// Shows control characters in all that is logged from now on, whoever handles it. Called once at program
/// start, before any thread.
void showControlCharactersInLog();
