// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Declare.h>

typedef const void *CFTypeRef;
typedef const struct __CFAllocator *CFAllocatorRef;
typedef const struct __CFArray *CFArrayRef;
typedef const struct __CFDictionary *CFDictionaryRef;
typedef const struct __CFString *CFStringRef;
typedef const struct __CFURL *CFURLRef;

PCT_DECLARE CFTypeRef CFRetain(CFTypeRef object);
PCT_DECLARE void CFRelease(CFTypeRef object);
