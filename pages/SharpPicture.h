// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QLabel;

/// Shows an image of the resource collection at its size in points, on a dense screen with the pixels of its
/// "@2x" image. A form's own pixmap would be blown up there.
void showSharpPicture(QLabel *label, const QString &image);
