// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <Declare.h>

typedef const struct __SCDynamicStore *SCDynamicStoreRef;

/// The host's local name, owned by the caller; null when it is not set. The store may be null.
PCT_DECLARE CFStringRef SCDynamicStoreCopyLocalHostName(SCDynamicStoreRef store);
