// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"
#include "config/Settings.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

struct Product;

/// Whether what the pages hold is another value of the setting than a product's default. Two values that a
/// document says alike are the same.
bool differsFromDefault(const Setting &setting, const EditorXmlData &onPages, const Product &product);

/// Shows which settings differ from their defaults: a dot beside each such control. A control's context menu
/// brings its default back. Looks at the pages through a copy of the record, so that nothing of a save
/// changes.
class ChangedMarks : public QObject
{
    Q_OBJECT

public:
    /// `settingsOnPages` gives what the pages hold; the parent lives as long as they do.
    ChangedMarks(const Product &product, const std::function<EditorXmlData()> &settingsOnPages,
                 QObject *parent);

    /// Watches the controls of the settings that lie in a page, which is filled.
    void watch(QWidget *page);

    /// How many of the page's settings differ from the defaults.
    int countOn(const QWidget *page) const;

    /// Looks at the pages again at once.
    void look();

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// Some counts may be others now.
    void looked();

private:
    struct Mark
    {
        const Setting *setting;
        QPointer<QWidget> control;
        QPointer<QWidget> dot;
        bool differs = false;
    };

    void mark(const Setting &setting, QWidget *control);
    void listenTo(QWidget *control);
    void place(const Mark &mark) const;
    void offerReset(const Mark &mark, const QPoint &position);
    static void resetControl(const Mark &mark);

    const Product &m_product;
    const std::function<EditorXmlData()> m_settingsOnPages;
    std::vector<Mark> m_marks;
    QTimer m_soon;
};
