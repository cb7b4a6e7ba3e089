// SPDX-License-Identifier: Apache-2.0
#include "config/KeptElement.h"

#include <QMutex>

QDomElement keptElement(const QDomElement &element)
{
    // Never destroyed, because records with static storage may be destroyed later.
    static auto *const owner = new QDomDocument;
    static QMutex mutex;
    const QMutexLocker locker(&mutex);
    return owner->importNode(element, true).toElement();
}
