// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Verb.h"

/// Verbs with all that a description can hold, whatever pct itself makes use of. Each prints what it was
/// given.
VerbTable sampleVerbs();
