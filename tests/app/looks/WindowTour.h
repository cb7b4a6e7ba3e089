// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/DlgCustomizationTool_v2.h"
#include "tests/app/FakePackages.h"

#include <QList>
#include <QMetaType>

#include <functional>

class QToolButton;

/// Something to look at in the main window.
struct TourStop
{
    QString name; ///< in small letters and hyphens, for example "preferences-mip"
    std::function<void()> show;
};

/// What the chooser at the start asks for.
struct Choice
{
    bool editor = true;
    PCW_CONFIGTYPE type = PCW_CONFIG_PACKAGE;
};
Q_DECLARE_METATYPE(Choice)

/// The real window for a choice, its pages filled with sample settings, and all that there is to see in it.
class WindowTour
{
public:
    explicit WindowTour(Choice choice);

    DlgCustomizationTool_v2 &window() { return *m_window; }
    QToolButton *tool(const char *name) const;

    /// Puts the window on the screen with the keyboard's focus. False when it does not come.
    bool open();

    /// From the welcome page to the last page. The opening pages come first and only once; the others can be
    /// shown again.
    QList<TourStop> stops();

private:
    TourStop pageStop(const QString &name, const QString &page);
    QList<TourStop> preferenceStops();
    QList<TourStop> ribbonStops();
    void loadPackage();
    void showPage(const QString &page);

    const Choice m_choice;
    FakePackages m_packages;
    std::unique_ptr<DlgCustomizationTool_v2> m_window;
};

/// Adds the column "choice" and a row for each product and output to the data of the running test.
void addChoiceRows();
