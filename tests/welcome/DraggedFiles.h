// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

#include <memory>

class QMimeData;
class QSignalSpy;
class QWidget;

/// Files that are dragged over a page, and what the page says of them.
namespace DraggedFiles {

/// What a file manager offers when these files are dragged.
std::unique_ptr<QMimeData> dragged(const QStringList &files);

/// Whether the page takes the drag.
bool acceptsDrag(QWidget &page, const QMimeData &data);

/// Whether the page takes the drop. Qt delivers one only to where a drag was accepted before, so a drag of
/// `welcome`, a file that the page takes, goes ahead.
bool acceptsDrop(QWidget &page, const QMimeData &data, const QString &welcome);

/// The note that a drop leaves in the log.
void expectDropLogged(const char *path);

/// The first argument of every emission.
QStringList pathsOf(const QSignalSpy &spy);

} // namespace DraggedFiles
