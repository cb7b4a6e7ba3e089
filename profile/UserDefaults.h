// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What is kept for the user in the system's defaults, in the domain of the running program: on a Mac that of the
/// bundle, elsewhere the program's name. The GUI thread.

/// The folder kept under "LastOpenDirectory", or the home folder when there is none.
QString readLastOpenDirectory();

/// Keeps a folder there at once.
void storeLastOpenDirectory(const QString &folder);

/// The window's language kept under "Language", in the words of PCT_LANGUAGE; empty when there is none. Only the user
/// writes it (`defaults write <domain> Language system`).
QString readLanguageChoice();
