// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

/// The problem as one line; null after a success.
template <typename Value> QString problemText(const Result<Value> &result)
{
    return result ? QString() : result.problem().line();
}
