// SPDX-License-Identifier: Apache-2.0
#include "pages/SharpPicture.h"

#include <QIcon>
#include <QLabel>

void showSharpPicture(QLabel *label, const QString &image)
{
    label->setPixmap(QIcon(image).pixmap(QPixmap(image).size()));
}
