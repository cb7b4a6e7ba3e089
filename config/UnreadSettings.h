// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

class QDomDocument;

/// What a configuration document holds beside the settings that ConfigDocument::apply reads, in the
/// document's order and for people: `Preference "Startpage"`, `attribute "mode" of Preference "StartPage"`.
/// What lies below an element that is not read, and inside the ribbon, is not told.
QStringList unreadSettings(const QDomDocument &document);
