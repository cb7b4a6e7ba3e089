// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/DlgCustomizationTool_v2.h"
#include "tests/app/PrivatePlace.h"
#include "tests/app/WindowDriver.h"

#include <memory>

class QToolButton;

/// How a build ends, as the user reads it.
namespace BuildMessages {
const QString packageMade = QStringLiteral("\nThe output package has been created successfully.");
const QString packageAndDocumentMade =
    QStringLiteral("\nThe output package and configure file have been created successfully.");
const QString buildFailed = QStringLiteral("\nFailed to create package. Please try again.");
const QString inputInvalid = QStringLiteral("\nThe input installer package is invalid.");
} // namespace BuildMessages

/// Builds through the real window with the real commands, in a place of its own.
class BuildFlow : public PrivatePlace
{
public:
    BuildFlow();

    /// A copy of the product's sample installer, so that no test can spoil it for another.
    QString sample(bool editor) const;

    /// A shown window with the real pages that has accepted the package.
    std::unique_ptr<DlgCustomizationTool_v2> openWindow(const QString &package, bool editor = true) const;

    /// Presses save, answers the dialog and waits for the message at the end. `next` announces the answer
    /// to a dialog in between.
    ShownMessage save(DlgCustomizationTool_v2 &window, const QString &output, bool keepDocument = false,
                      const std::function<void()> &next = {});

    QString output(const char *name = "out/custom.pkg") const { return path(name); }

    /// Where a build of the package expands it.
    QString workFolder(const QString &package) const;

private:
    QObject m_context;
};

QToolButton *tool(const DlgCustomizationTool_v2 &window, const char *name);

/// Whether cmp finds no difference.
bool equalFiles(const QString &first, const QString &second);
