// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

/// What has to be right in the process before `pct` does anything.
namespace Startup {

/// Standard descriptors that the starter has closed get a place of their own, so that no file that is
/// opened later is taken for standard output. Writing to a closed output fails as it should.
void occupyStandardDescriptors();

/// File names are UTF-8 for this process and the commands it starts, in whatever locale a build server
/// runs. Must come before the QCoreApplication.
void useUtf8FileNames();

/// Debug output and library warnings stay silent unless PCT_DEBUG is 1; then their control characters show.
void muteDebugLog();

/// A PATH that is not set or empty becomes the system's own, as shells do it. Before any thread.
void supplyPath();

/// Asks the system for as many open files as `pct` and its commands need.
void raiseFileLimit();

/// That there can be as many.
Result<> checkFileLimit();

/// A reader that goes away, or a limit on the size of files, makes writing fail instead of ending the
/// process with its folders in place.
void ignoreWriteSignals();

} // namespace Startup
