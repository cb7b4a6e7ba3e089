// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Where Qt keeps the translations of its own texts on this machine; the folder may be missing.
QString qtTranslationsFolder();
