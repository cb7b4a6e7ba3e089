// SPDX-License-Identifier: Apache-2.0
#pragma once

/// How much the scripts of a page may ask of the tool. The view holds them to it, and the page's side of the
/// bridge spares it the calls that it would refuse.
namespace BridgeLimits {

constexpr int callsPerSecond = 100;
constexpr int longestCall = 1 << 20; ///< UTF-16 units in all texts of a call

} // namespace BridgeLimits
