// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/engine/EnginePermissions.h"

#include <QWebEnginePage>

void EnginePermissions::refuseAll(QWebEnginePage *page)
{
    QObject::connect(page, &QWebEnginePage::featurePermissionRequested, page,
                     [page](const QUrl &origin, QWebEnginePage::Feature feature) {
                         page->setFeaturePermission(origin, feature, QWebEnginePage::PermissionDeniedByUser);
                     });
}
