// Runs in a page before its own scripts and gives them `window.external`. A call goes through prompt(), for which
// the page waits: the view takes those that carry `key` for calls. Whatever the page may replace later is kept here.
function (key, callsPerSecond, longestCall) {
    "use strict";
    const ask = window.prompt.bind(window);
    const pack = JSON.stringify;
    const now = Date.now;
    const asText = String;
    const refused = "{ ret:999 }";
    let second = 0;
    let calls = 0;

    const text = value => value === undefined || value === null ? "" : asText(value);

    // The view has limits as well; these spare a page that is out of hand the way to it.
    function admits(size) {
        if (now() - second >= 1000) {
            second = now();
            calls = 0;
        }
        return ++calls <= callsPerSecond + 1 && size <= longestCall;
    }

    function send(method, first, second, third, fourth) {
        const size = first.length + second.length + third.length + fourth.length;
        return admits(size) ? ask(key, pack([method, first, second, third, fourth])) : refused;
    }

    const external = Object.create(null);
    external.DispatchFun = Object.freeze((module, func, parameter) =>
        send("DispatchFun", text(module), text(func), text(parameter), ""));
    external.DispatchFunAsync = Object.freeze((module, func, parameter, callback) =>
        send("DispatchFunAsync", text(module), text(func), text(parameter), text(callback)));
    Object.defineProperty(window, "external",
        { value: Object.freeze(external), writable: false, configurable: false, enumerable: true });

    // Dialogs of the page would stop the tool.
    window.alert = () => undefined;
    window.confirm = () => false;
    window.prompt = () => null;
    window.addEventListener("beforeunload", event => event.stopImmediatePropagation(), true);

    // Whether the user or a script follows a link is told apart by some versions of the engine only.
    function tellClickedLink(event) {
        const link = event.isTrusted && event.target.closest && event.target.closest("a[href], area[href]");
        if (link)
            send("linkClicked", text(link.href), "", "", "");
    }
    window.addEventListener("click", tellClickedLink, true);
    window.addEventListener("auxclick", tellClickedLink, true);

    window.addEventListener("error", event => {
        if (event.target !== window)
            send("resourceFailed", "", "", "", "");
    }, true);
}
