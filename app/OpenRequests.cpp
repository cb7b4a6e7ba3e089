// SPDX-License-Identifier: Apache-2.0
#include "app/OpenRequests.h"

#include "app/DlgCustomizationTool_v2.h"

#include <QApplication>
#include <QFileInfo>
#include <QFileOpenEvent>

#include <algorithm>
#include <utility>

namespace {

QString firstFile(const QStringList &arguments)
{
    const auto isFile = [](const QString &argument) { return !argument.startsWith(QLatin1Char('-')); };
    const auto file =
        std::find_if(arguments.begin() + (arguments.isEmpty() ? 0 : 1), arguments.end(), isFile);
    return file == arguments.end() || file->isEmpty() ? QString() : QFileInfo(*file).absoluteFilePath();
}

} // namespace

OpenRequests::OpenRequests(const QStringList &arguments)
    : m_path(firstFile(arguments))
{
    qApp->installEventFilter(this);
}

void OpenRequests::serve(DlgCustomizationTool_v2 *window)
{
    m_window = window;
    openLater();
}

bool OpenRequests::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FileOpen) {
        take(static_cast<QFileOpenEvent *>(event)->file());
        return true;
    }
    // A dialog of the window has closed, or a build has ended.
    if (watched == m_window &&
        (event->type() == QEvent::WindowUnblocked || event->type() == QEvent::EnabledChange))
        openLater();
    return QObject::eventFilter(watched, event);
}

void OpenRequests::take(const QString &path)
{
    // An address of something that is no file.
    if (path.isEmpty())
        return;
    m_path = path;
    openLater();
}

void OpenRequests::openLater()
{
    QMetaObject::invokeMethod(this, &OpenRequests::openNow, Qt::QueuedConnection);
}

void OpenRequests::openNow()
{
    auto *window = qobject_cast<DlgCustomizationTool_v2 *>(m_window.data());
    if (m_path.isEmpty() || !window || !window->isEnabled() || QApplication::activeModalWidget())
        return;
    window->openPath(std::exchange(m_path, QString()));
}
