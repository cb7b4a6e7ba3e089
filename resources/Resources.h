// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Makes the compiled-in files available under ":/". A program that links this library statically calls it
/// once at start, because nothing else refers to them.
void initPctResources();
