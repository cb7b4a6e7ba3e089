// SPDX-License-Identifier: Apache-2.0
#include "app/ApplicationLook.h"
#include "app/DlgCustomizationTool_v2.h"
#include "core/Logging.h"
#include "app/OpenRequests.h"
#include "app/StartUp.h"
#include "app/Translation.h"
#include "core/HostPaths.h"
#include "core/Logging.h"
#include "core/QtCompatibility.h"
#include "core/Version.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QLoggingCategory>

int main(int argc, char *argv[])
{
    // The style sheets of the forms name properties that Qt does not know: marks of ours, and some of the
    // web. Qt notes each of them in the default category, to which nothing of ours writes.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    showControlCharactersInLog();
    initPctResources();
    QApplication application(argc, argv);
    QApplication::setApplicationVersion(QLatin1String(toolVersion));
    const QString language = chosenLanguage();
    if (!installTranslation(application, language))
        qCWarning(logApp).noquote() << QStringLiteral("no translation into \"%1\"").arg(language);
    QtCompatibility::useHighDpiPixmaps();
    useApplicationLook();
    HostPaths::putStandInsFirst();

    OpenRequests requests(QCoreApplication::arguments());
    DlgCustomizationTool_v2 *window = makeChosenWindow();
    if (!window)
        return 1;
    window->show();
    requests.serve(window);
    return QApplication::exec();
}
