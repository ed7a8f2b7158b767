// Makes the bridge a page's script can call from its first line on. The
// channel comes up asynchronously, so each method of the bridge is a stub
// that returns a Promise: calls made before the channel is up wait for it,
// and every call resolves with the method's answer. Runs before the page's
// own script, in the main frame only, and only where the library put the
// channel's transport; QWebChannel is in scope (qwebchannel.js before this).
//
// A frame of another origin must not reach the bridge. The engine keeps
// such frames out of the page's script unless the page relaxes its domain
// (which the lock only lets another window's setter do), and the engine
// tells nobody which frames a page has: so before each message the page
// itself looks for a frame of another origin it can reach (and that can
// reach it). Where there is one, nothing goes out, now and until the next
// document, and the page reports it once (refusal, a console message the
// engine turns into the library's warning). The engine's transport is
// replaced by one that does this check: the page keeps no way to the bridge
// around it.
(function (name, methods, refusal) {
    if (typeof qt === "undefined" || !qt.webChannelTransport)
        return;
    var engine = qt.webChannelTransport;
    var send = engine.send;
    var apply = Reflect.apply;
    var length = Object.getOwnPropertyDescriptor(window, "length");
    // The document's origin (an empty frame's is its creator's), read with
    // this window's getter: a frame cannot fake it.
    var originOf = Object.getOwnPropertyDescriptor(window, "origin").get;
    var origin = apply(originOf, window, []);
    var report = console.error;
    var refused = false;
    var foreignFrameIn = function (parent, count) {
        for (var i = 0; i < count; ++i) {
            var frame = parent[i];
            var frameOrigin;
            var frameCount;
            try {
                frameOrigin = apply(originOf, frame, []);
                frameCount = frame.length;
            } catch (e) {
                continue; // out of reach, and the page out of its reach
            }
            if (frameOrigin !== origin || foreignFrameIn(frame, frameCount))
                return true;
        }
        return false;
    };
    var reached = function () {
        if (!refused && foreignFrameIn(window, length && length.get ? apply(length.get, window, [])
                                                                     : window.length)) {
            refused = true;
            apply(report, console, [refusal]);
        }
        return refused;
    };
    // The engine hands what comes back to qt.webChannelTransport.onmessage.
    var transport = {
        send: function (message) {
            if (!reached())
                apply(send, engine, [message]);
        },
        onmessage: null
    };
    Object.defineProperty(qt, "webChannelTransport", {
        value: transport,
        writable: false,
        enumerable: true,
        configurable: false
    });
    var bridge = null;
    var waiting = [];
    var stubs = {};
    methods.forEach(function (method) {
        var least = method[1];
        var most = method[2];
        // The channel answers null for nothing; QtWebKit's bridge, undefined.
        var answer = method[3] ? function (resolve) {
            return function () {
                resolve(undefined);
            };
        } : function (resolve) {
            return resolve;
        };
        stubs[method[0]] = function () {
            var args = Array.prototype.slice.call(arguments, 0, most);
            return new Promise(function (resolve, reject) {
                // As QtWebKit's bridge: too few arguments is an error.
                if (args.length < least)
                    return reject(new TypeError(name + "." + method[0] + " takes " + least +
                                                " arguments at least"));
                if (reached())
                    return resolve(undefined);
                var call = function () {
                    apply(bridge[method[0]], bridge, args.concat([answer(resolve)]));
                };
                if (bridge)
                    call();
                else
                    waiting.push(call);
            });
        };
    });
    Object.defineProperty(window, name, {
        value: Object.freeze(stubs),
        writable: false,
        enumerable: true,
        configurable: false
    });
    new QWebChannel(transport, function (channel) {
        bridge = channel.objects[name];
        waiting.splice(0).forEach(function (call) {
            call();
        });
    });
})
