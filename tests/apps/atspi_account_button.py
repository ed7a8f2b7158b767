"""The account button as an assistive tool meets it, over AT-SPI.

The reference host runs on an Xvfb display of its own, with the demo user
signed in, in a temporary home, runtime directory and profile, inside a
D-Bus session of its own (dbus-run-session), which starts the
accessibility bus there. The test finds the button by role and name,
checks its actions, presses it through AT-SPI and sees the account menu
open (a new window on the display: Qt leaves popups out of the
accessible tree).

Usage: python3 atspi_account_button.py BIN_DIR
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

import pyatspi
from gi.repository import Gio, GLib


def wait_for(probe, what, seconds=20):
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        # The events that bring the accessible tree's cache up to date.
        while GLib.MainContext.default().pending():
            GLib.MainContext.default().iteration(False)
        found = probe()
        if found:
            return found
        time.sleep(0.1)
    sys.exit("not found within %d s: %s" % (seconds, what))


def find(node, matches, depth=0):
    if node is None or depth > 20:
        return None
    if matches(node):
        return node
    for child in node:
        hit = find(child, matches, depth + 1)
        if hit:
            return hit
    return None


def on_session_bus(pid):
    bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)

    def call(method, arguments, reply):
        return bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus", method, arguments,
                             GLib.VariantType(reply), Gio.DBusCallFlags.NONE, -1, None)[0]

    return any(call("GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)), "(u)") == pid
               for name in call("ListNames", None, "(as)") if name.startswith(":"))


def viewable_windows(display):
    """The top-level windows on the display that are mapped."""
    env = dict(os.environ, DISPLAY=display)
    tree = subprocess.run(["xwininfo", "-root", "-children"], env=env,
                          capture_output=True, text=True).stdout
    return {wid for wid in re.findall(r"^\s+(0x[0-9a-f]+) ", tree, re.M)
            if "IsViewable" in subprocess.run(["xwininfo", "-id", wid], env=env,
                                               capture_output=True, text=True).stdout}


def main(bin_dir):
    """Runs the test in a session bus, a home and a runtime directory of its
    own: the accessibility bus keeps its socket there."""
    root = tempfile.mkdtemp(prefix="atspi-")
    try:
        os.mkdir(os.path.join(root, "runtime"), 0o700)
        env = dict(os.environ, HOME=root, XDG_RUNTIME_DIR=os.path.join(root, "runtime"),
                   XDG_CONFIG_HOME=os.path.join(root, "config"))
        sys.exit(subprocess.run(["dbus-run-session", "--", sys.executable, __file__, bin_dir,
                                 root], env=env).returncode)
    finally:
        shutil.rmtree(root, ignore_errors=True)


def run_in_session(bin_dir, root):
    read_end, write_end = os.pipe()
    xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0",
                             "1280x1024x24", "-nolisten", "tcp"], pass_fds=[write_end])
    host = None
    try:
        os.close(write_end)
        display = ":" + os.read(read_end, 16).decode().strip()
        shutil.copytree(os.path.join(bin_dir, "profile"), os.path.join(root, "profile"))
        with open(os.path.join(root, "state.json"), "w") as state:
            state.write("{}")
        env = dict(os.environ, DISPLAY=display, QT_QPA_PLATFORM="xcb",
                   QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                   ZENTO_HOST_PROFILE=os.path.join(root, "profile"),
                   DESKHIVE_STATE=os.path.join(root, "state.json"))
        host = subprocess.Popen([os.path.join(bin_dir, "zentooffice"), "--signed-in"], env=env)
        # Qt 5 sometimes misses an accessibility bus that is there before it
        # starts, and finds one that starts later: the bus (started by the
        # first AT-SPI call) comes once the host is on the session bus.
        wait_for(lambda: on_session_bus(host.pid), "the host on the session bus")
        desktop = pyatspi.Registry.getDesktop(0)

        app = wait_for(lambda: find(desktop, lambda n: n.getRole() == pyatspi.ROLE_APPLICATION
                                    and n.name == "zentooffice"), "the host application")
        button = wait_for(lambda: find(app, lambda n: n.getRole() == pyatspi.ROLE_PUSH_BUTTON
                                       and n.name == "Demo User"
                                       and n.getState().contains(pyatspi.STATE_SHOWING)),
                          "a push button named after the signed-in user")
        assert button.getState().contains(pyatspi.STATE_FOCUSABLE)
        action = button.queryAction()
        actions = [action.getName(i) for i in range(action.nActions)]
        assert "Press" in actions and "ShowMenu" in actions, actions

        before = viewable_windows(display)
        action.doAction(actions.index("Press"))
        wait_for(lambda: viewable_windows(display) - before, "the account menu", 10)
        print("atspi: the account button pressed through AT-SPI opened the account menu")
    finally:
        if host:
            host.terminate()
            host.wait()
        xvfb.terminate()
        xvfb.wait()


if __name__ == "__main__":
    if len(sys.argv) > 2:
        run_in_session(sys.argv[1], sys.argv[2])
    else:
        main(sys.argv[1])
