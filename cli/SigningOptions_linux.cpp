// SPDX-License-Identifier: Apache-2.0
#include "cli/SigningOptions.h"

Option timestampOption()
{
    return {OptionName::timestamp, QStringLiteral("ask this timestamp service of RFC 3161, too"),
            Value::text("URL")};
}
