// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;
class WebBackend;
class WebViewTarget;

/// The one function of the module that holds the web engine. The caller owns the result.
using MakeEngineBackend = WebBackend *(WebViewTarget *target, QWidget *parent);
constexpr char makeEngineBackendName[] = "pctMakeEngineBackend";
