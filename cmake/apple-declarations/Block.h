// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Declare.h>

PCT_DECLARE void *_Block_copy(const void *block);
PCT_DECLARE void _Block_release(const void *block);
