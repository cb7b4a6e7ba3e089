// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWebEnginePage;

/// What a page asks the user for: camera, place, notifications. Qt 6.8 renamed the question, so there is one
/// source for it and one for older versions; CMake picks.
namespace EnginePermissions {

/// Refuses whatever `page` asks for, as long as it lives. Call it once, on the GUI thread.
void refuseAll(QWebEnginePage *page);

} // namespace EnginePermissions
