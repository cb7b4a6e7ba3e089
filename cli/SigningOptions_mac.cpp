// SPDX-License-Identifier: Apache-2.0
#include "cli/SigningOptions.h"

Option timestampOption()
{
    return {OptionName::timestamp, QStringLiteral("ask Apple's timestamp service, too")};
}
