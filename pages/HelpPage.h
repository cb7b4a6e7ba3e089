// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The file name of a help page, with or without "#anchor", as it stands in a URL: a blank becomes "%20".
QString encodedHelpPage(const QString &fileName);
