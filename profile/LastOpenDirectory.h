// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The folder kept in the user defaults under "LastOpenDirectory", or the home folder when there is none.
QString readLastOpenDirectory();

/// Keeps a folder there at once.
void storeLastOpenDirectory(const QString &folder);
