// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QEvent>
#include <QObject>
#include <QTimer>

#include <cstdlib>

/// Installed on the application, ends the process as soon as a window has been painted for the first time.
class EndAtFirstPaint : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        // After the event, so that the painting itself counts.
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, this, [] { std::_Exit(EXIT_SUCCESS); });
        return false;
    }
};
