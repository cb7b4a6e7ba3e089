// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

/// Something in a result that no build makes.
struct Deviation
{
    QString code;  ///< stable, for programs: "entry-added"
    QString entry; ///< path in the package; of a member of a scripts archive with that in front
    QString text;  ///< a clause for people
};

using Deviations = QList<Deviation>;
