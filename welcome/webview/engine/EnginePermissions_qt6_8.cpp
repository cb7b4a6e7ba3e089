// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/engine/EnginePermissions.h"

#include <QWebEnginePage>
#include <QWebEnginePermission>

void EnginePermissions::refuseAll(QWebEnginePage *page)
{
    QObject::connect(page, &QWebEnginePage::permissionRequested, page,
                     [](const QWebEnginePermission &permission) { permission.deny(); });
}
