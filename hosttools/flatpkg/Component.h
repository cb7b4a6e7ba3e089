// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace FlatPkg {

/// True for the path of a component's install scripts: "Scripts" in a plain component package, otherwise
/// "Scripts" in a folder named *.pkg.
inline bool isScriptsMember(const QByteArray &path)
{
    return path == "Scripts" || path.endsWith(".pkg/Scripts");
}

} // namespace FlatPkg
