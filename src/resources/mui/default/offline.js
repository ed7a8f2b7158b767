// The offline page's behaviour, shared by every language's copy. It talks to
// the dialog through "zentoctx" when the dialog offers it. A bridge call
// answers at once on QtWebKit and with a Promise on QtWebEngine:
// Promise.all and Promise.resolve take either (QtWebKit has no await).
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
        Promise.all([bridge.isLogined(), bridge.loginedUserId()]).then(function (answers) {
            var signedIn = answers[0];
            // The page's own language: its texts sit in the element's data.
            account.textContent = signedIn
                ? account.getAttribute("data-signed-in").replace("%1", answers[1])
                : account.getAttribute("data-signed-out");
            show("login", !signedIn);
        });
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
        Promise.all([bridge.version(), bridge.lang()]).then(function (answers) {
            document.getElementById("about").textContent =
                "Zento Office " + answers[0] + " \u00b7 " + answers[1];
        });
        show("close", true);
    }
    refreshAccount();
})();
