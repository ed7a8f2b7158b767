// Keeps a document with the bridge from relaxing document.domain, the one
// way a frame of another origin could reach its script: the setter throws
// as a sandboxed document's does. Defined on the document itself, not
// configurable, so the page's own script cannot take it back.
(function () {
    var domain = Object.getOwnPropertyDescriptor(Document.prototype, "domain");
    if (!domain || Object.getOwnPropertyDescriptor(document, "domain"))
        return;
    Object.defineProperty(document, "domain", {
        get: domain.get,
        set: function () {
            var refused = new Error("document.domain cannot be changed in this dialog");
            refused.name = "SecurityError";
            throw refused;
        },
        enumerable: true,
        configurable: false
    });
})();
