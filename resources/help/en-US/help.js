// SPDX-License-Identifier: Apache-2.0
// The guide is shown in the tool, which can close it, and in browsers, which cannot. Old engines read this.
(function () {
    "use strict";

    function canClose() {
        return Boolean(window.external) && typeof window.external.DispatchFun === "function";
    }

    function closeGuide() {
        window.external.DispatchFun("closeguidfun", "closeguid", "");
    }

    function offerClosing() {
        var button = document.getElementById("close");
        if (!button || !canClose()) {
            return;
        }
        button.onclick = closeGuide;
        button.hidden = false;
    }

    // Paper cannot be unfolded.
    function unfoldAll() {
        var folded = document.getElementsByTagName("details");
        for (var i = 0; i < folded.length; ++i) {
            folded[i].open = true;
        }
    }

    offerClosing();
    window.addEventListener("beforeprint", unfoldAll);
}());
