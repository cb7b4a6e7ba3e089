// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The name by which this machine is known on the local network, without a domain. Any thread.
QString localHostName();
