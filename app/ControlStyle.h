// SPDX-License-Identifier: Apache-2.0
#pragma once

class QStyle;

/// The style that draws what no style sheet does: on a Mac the system's own, elsewhere one that goes with the
/// style sheets of the pages. Owned by the caller.
QStyle *makeControlStyle();
