// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Runs the command line of this process on its standard streams. Returns the exit code, which is that of
/// a failure when standard output could not be written.
int runProgram();
