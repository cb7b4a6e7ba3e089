// SPDX-License-Identifier: Apache-2.0
#include "tests/welcome/DraggedFiles.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

std::unique_ptr<QMimeData> DraggedFiles::dragged(const QStringList &files)
{
    auto data = std::make_unique<QMimeData>();
    QList<QUrl> urls;
    for (const QString &file : files)
        urls.append(QUrl::fromLocalFile(file));
    data->setUrls(urls);
    return data;
}

bool DraggedFiles::acceptsDrag(QWidget &page, const QMimeData &data)
{
    QDragEnterEvent event(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&page, &event);
    return event.isAccepted() && event.dropAction() == Qt::CopyAction;
}

bool DraggedFiles::acceptsDrop(QWidget &page, const QMimeData &data, const QString &welcome)
{
    if (!acceptsDrag(page, *dragged({welcome})))
        qFatal("the page takes no drags");
    QDropEvent event(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&page, &event);
    return event.isAccepted();
}

void DraggedFiles::expectDropLogged(const char *path)
{
    QTest::ignoreMessage(QtDebugMsg, QByteArray("Dropped file: \"" + QByteArray(path) + '"').constData());
}

QStringList DraggedFiles::pathsOf(const QSignalSpy &spy)
{
    QStringList paths;
    for (const QList<QVariant> &arguments : spy)
        paths.append(arguments.at(0).toString());
    return paths;
}
