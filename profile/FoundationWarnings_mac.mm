// SPDX-License-Identifier: Apache-2.0
#include "profile/FoundationWarnings.h"

void silenceFoundationWarnings()
{
    // Apple's Foundation writes none.
}
