// SPDX-License-Identifier: Apache-2.0
#pragma once

/// A function or constant of the system's, in each of the three languages.
#ifdef __cplusplus
#define PCT_DECLARE extern "C"
#else
#define PCT_DECLARE extern
#endif
