// SPDX-License-Identifier: Apache-2.0
#pragma once

#define MAC_OS_X_VERSION_MIN_REQUIRED 101500
#define MAC_OS_X_VERSION_MAX_ALLOWED 140000
