// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>

/// True when the environment asks for this mutant. All mutants of a run lie in one build, so that it is compiled once.
inline bool isMutant(int number)
{
    static const char *const wanted = std::getenv("PCT_MUTANT");
    static const int active = wanted ? std::atoi(wanted) : 0;
    return active == number;
}
