// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <functional>

/// Runs work on input that may be hostile in a child process with little memory and time, and gives the
/// bytes that it returns. An Error that leaves the work comes back as one; so does a crash and what would
/// take more than 1 GiB or 10 seconds. Throws FlatPkg::Error; to be called while there is one thread.
QByteArray contained(const std::function<QByteArray()> &work);
