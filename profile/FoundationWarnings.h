// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Keeps Foundation from writing lines of its own to standard error while it reads; what is wrong, its
/// errors say. User-interface thread only.
void silenceFoundationWarnings();
