// SPDX-License-Identifier: Apache-2.0
// Loads the web engine when the first page is wanted. Linked into the program, it would cost every start.
#include "core/Logging.h"
#include "welcome/webview/engine/EngineModule.h"
#include "welcome/webview/ScopedVariable_linux.h"
#include "welcome/webview/WebBackend.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QOpenGLContext>

#include <unistd.h>

QT_BEGIN_NAMESPACE
// Qt makes the application's shared context with these when it is asked for before the start, and the web
// engine when it is linked into the program.
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext *context);
Q_GUI_EXPORT QOpenGLContext *qt_gl_global_share_context();
QT_END_NAMESPACE

namespace {

void deleteSharedContext()
{
    delete qt_gl_global_share_context();
    qt_gl_set_global_share_context(nullptr);
}

/// The engine draws through contexts that share with the application's, and complains when it is loaded
/// without one. Made here instead of at the start, where it would cost more than the rest of the start.
bool shareOpenGL()
{
    if (qt_gl_global_share_context())
        return true;
    auto context = std::make_unique<QOpenGLContext>();
    if (!context->create())
        return false;
    qt_gl_set_global_share_context(context.release());
    qAddPostRoutine(deleteSharedContext);
    return true;
}

QString modulePath()
{
    QString folder = qEnvironmentVariable("PCT_MODULES");
    if (folder.isEmpty())
        folder = QCoreApplication::applicationDirPath() + QStringLiteral("/../lib/pct");
    return folder + QStringLiteral("/pct-webengine.so");
}

MakeEngineBackend *loadModule()
{
    QLibrary module(modulePath());
    // A web engine that has run cannot be unloaded.
    module.setLoadHints(QLibrary::PreventUnloadHint);
    const QFunctionPointer entry = module.resolve(makeEngineBackendName);
    if (!entry)
        qCWarning(logWelcome).noquote() << "Help pages cannot be shown:" << module.errorString();
    return reinterpret_cast<MakeEngineBackend *>(entry);
}

/// Host names resolve to nothing, so that also what the engine does on its own account stays on the machine.
QByteArray closedNetwork()
{
    return qgetenv("QTWEBENGINE_CHROMIUM_FLAGS") + " --host-resolver-rules=\"MAP * ~NOTFOUND\" "
                                                   "--force-webrtc-ip-handling-policy=disable_non_proxied_udp"
                                                   " --disable-background-networking";
}

} // namespace

std::unique_ptr<WebBackend> makeWebBackend(WebViewTarget *target, QWidget *parent)
{
    if (!shareOpenGL()) {
        qCWarning(logWelcome, "Help pages cannot be shown: there is no OpenGL.");
        return nullptr;
    }
    // The engine reads them while the first view is made; a browser that is started later must not.
    const ScopedVariable network("QTWEBENGINE_CHROMIUM_FLAGS", closedNetwork());
    std::optional<ScopedVariable> sandbox;
    if (geteuid() == 0) // its sandbox does not work for root
        sandbox.emplace("QTWEBENGINE_DISABLE_SANDBOX", "1");
    MakeEngineBackend *make = loadModule();
    return std::unique_ptr<WebBackend>(make ? make(target, parent) : nullptr);
}
