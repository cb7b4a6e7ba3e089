// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QCoreApplication;

/// Shows the window's texts in the language that PCT_LANGUAGE asks for: a code such as "de" or "de_AT", or
/// "system" for the languages that the user prefers. Empty or English leaves the texts as they are written.
/// Only shown texts change. Nothing that enters a document, a profile, a package or a file name is
/// translated.
///
/// Called on the GUI thread before the first window is made; the translators belong to the application.
/// False, and nothing changes, when a language is asked for by its code and there is no translation into it.
bool installTranslation(QCoreApplication &application, const QString &language);
