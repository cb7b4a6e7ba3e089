// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <unistd.h>

/// Adds the number to the file that PCT_MUTANT_TRACE names, once in a process: a test reaches this mutant.
inline void tellThatReached(int number)
{
    static const char *const path = std::getenv("PCT_MUTANT_TRACE");
    static bool told[4096] = {};
    if (!path || told[number])
        return;
    told[number] = true;
    const std::string line = std::to_string(number) + '\n';
    const int file = ::open(path, O_WRONLY | O_APPEND | O_CREAT, 0600);
    if (file < 0 || ::write(file, line.data(), line.size()) < 0)
        std::abort();
    ::close(file);
}

/// True when the environment asks for this mutant. All mutants of a run lie in one build, so that it is
/// compiled once.
inline bool isMutant(int number)
{
    static const char *const wanted = std::getenv("PCT_MUTANT");
    static const int active = wanted ? std::atoi(wanted) : 0;
    tellThatReached(number);
    return active == number;
}
