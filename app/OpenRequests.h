// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class DlgCustomizationTool_v2;

/// The file that somebody outside asks the tool to open: by the command line, or, on macOS, by a double
/// click or a drop on the tool's icon, which arrives as an event at any time. It opens as if it had been
/// chosen with the Open button. Until there is a window that is free to open it, it waits; a newer file
/// takes its place. User-interface thread only; lives as long as the application's event loop.
class OpenRequests : public QObject
{
    Q_OBJECT

public:
    /// Takes the first of the program's arguments that is no option, if there is one, and watches the
    /// application for events. Made before the first window, because macOS sends the event early.
    explicit OpenRequests(const QStringList &arguments);

    /// Opens in this window what has been asked for and what will be.
    void serve(DlgCustomizationTool_v2 *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void take(const QString &path);
    void openLater();
    void openNow();

    QString m_path;
    QPointer<QObject> m_window; ///< also seen while it goes, when it is no such window any more
};
