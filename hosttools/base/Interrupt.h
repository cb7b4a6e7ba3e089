// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Lets a command that is asked to stop remove what it has half made.
namespace FlatPkg::Interrupt {

/// From now on SIGINT, SIGTERM and SIGHUP only leave a note. Called once, before any thread.
void watch();

/// Whether such a signal has come, for code through which nothing may be thrown.
bool isRequested();

/// Throws Error when such a signal has come. Called by every loop that can take long, in any thread.
void check();

} // namespace FlatPkg::Interrupt
