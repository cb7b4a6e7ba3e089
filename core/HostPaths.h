// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Where the macOS commands that the tool calls, and the files of the system that it reads, live on this machine.
///
/// On macOS every command is what its name or path says. Elsewhere stand-ins answer: they lie in
/// `../libexec/pct` beside the executable's folder, or in the folder that the environment variable
/// PCT_HOSTTOOLS names. May be called from any thread.
namespace HostPaths {

/// The program to start for an absolute path such as "/usr/bin/profiles": the path itself where it
/// exists, otherwise the stand-in of that name. A bare name is returned unchanged, because PATH finds it.
QString command(const QString &nameOrPath);

/// Puts the stand-ins in front of PATH, so that commands called by name find them. Called once at
/// program start, before any thread; does nothing on macOS and when called again.
void putStandInsFirst();

/// The folder with what a management forces on the users: the system's own, or elsewhere the one that the
/// environment variable PCT_MANAGED_PREFERENCES names.
QString managedPreferences();

} // namespace HostPaths
