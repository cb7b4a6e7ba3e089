// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Pages with a higher id have a button but no place in the window.
constexpr int highestPageId = 5;
