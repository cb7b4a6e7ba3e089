// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"

/// Settings with which every kind of control shows something, for the Editor or the Reader.
EditorXmlData sampleSettings(bool editor);
