// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Whether the user has asked the system for less motion.
bool prefersReducedMotion();
