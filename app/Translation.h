// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QCoreApplication;

/// The language that the user wants for the window: PCT_LANGUAGE or, where that is not set, as for a program that is
/// started from a desktop, what the user's defaults keep. Empty when neither says anything.
QString chosenLanguage();

/// Shows the window's texts in a language: a code such as "de" or "de_AT", or "system" for the languages that the user
/// prefers. Empty or English leaves the texts as they are written, and so does a text that the translation lacks.
/// Only shown texts change. Nothing that enters a document, a profile, a package or a file name is
/// translated.
///
/// Called on the GUI thread before the first window is made; the translators belong to the application.
/// False, and nothing changes, when a language is asked for by its code and there is no translation into it.
bool installTranslation(QCoreApplication &application, const QString &language);
