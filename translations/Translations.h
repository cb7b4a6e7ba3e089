// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Makes the compiled-in catalogues available under ":/translations". Called before the first of them is
/// loaded, because nothing else in a statically linked program refers to them.
void initPctTranslations();
