// The offline page's behaviour, shared by every language's copy. It talks to
// the dialog through "zentoctx" when the dialog offers it.
(function () {
    var bridge = typeof zentoctx !== "undefined" ? zentoctx : null;

    function show(id, visible) {
        document.getElementById(id).className = visible ? "" : "hidden";
    }

    // Called by the dialog once a sign-in has succeeded, and on start.
    window.refreshAccount = function () {
        var account = document.getElementById("account");
        if (!bridge) {
            account.textContent = "";
            return;
        }
        var signedIn = bridge.isLogined();
        // The page's own language: its texts sit in the element's data.
        account.textContent = signedIn
            ? account.getAttribute("data-signed-in").replace("%1", bridge.loginedUserId())
            : account.getAttribute("data-signed-out");
        show("login", !signedIn);
    };

    document.getElementById("retry").onclick = function () {
        // The page that failed is the one before this in the dialog's history.
        if (history.length > 1)
            history.back();
        else
            location.reload();
    };
    document.getElementById("login").onclick = function () {
        bridge.login("refreshAccount");
    };
    document.getElementById("close").onclick = function () {
        bridge.reject();
    };

    if (bridge) {
        document.getElementById("about").textContent =
            "Zento Office " + bridge.version() + " \u00b7 " + bridge.lang();
        show("close", true);
    }
    refreshAccount();
})();
