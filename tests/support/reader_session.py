# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: GPL-2.0-or-later

"""A desktop of the test's own for reading halvane as a screen reader does.

It starts a virtual X server, a session bus and the accessibility bus
launcher, each a child of the test, and sends nothing to the machine's own
session or system bus: the environment given to every process points at the
test's own buses and folders. Everything is stopped when the session ends.
"""

import importlib.util
import os
import shutil
import socket
import subprocess
import tempfile
import time

BUS_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
SKIPPED = 77  # ctest's SKIP_RETURN_CODE for this test


def missing_packages():
    """The Debian packages whose programs or modules are not there."""
    missing = []
    if not shutil.which("Xvfb"):
        missing.append("xvfb")
    if not shutil.which("openbox"):
        missing.append("openbox")
    if not shutil.which("dbus-daemon"):
        missing.append("dbus-daemon")
    if not os.access(BUS_LAUNCHER, os.X_OK):
        missing.append("at-spi2-core")
    # Looked for, not loaded: loading it would reach for the machine's buses.
    if importlib.util.find_spec("pyatspi") is None:
        missing.append("python3-pyatspi")
    return missing


def wait_for(what, probe, seconds=20.0):
    """Polls `probe` until it gives something true, which it returns."""
    deadline = time.monotonic() + seconds
    while True:
        value = probe()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError("timed out waiting for " + what)
        time.sleep(0.1)


class ReaderSession:
    """X server, session bus and accessibility bus, in this order."""

    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix="tessaly-reader-")
        os.chmod(self.folder, 0o700)
        self.processes = []
        self.env = self._own_environment()
        try:
            self._start_x_server()
            self._start_session_bus()
            self._start_window_manager()
            self._start_accessibility_bus()
        except BaseException:
            self.close()
            raise

    def _own_environment(self):
        env = {key: value for key, value in os.environ.items()
               if not key.startswith(("DBUS_", "AT_SPI_", "XDG_", "QT_", "WAYLAND_", "DISPLAY", "XAUTHORITY",
                                      "SESSION_MANAGER", "GTK_MODULES"))}
        env.update(HOME=self.folder, XDG_RUNTIME_DIR=self.folder,
                   XDG_CONFIG_HOME=os.path.join(self.folder, "config"),
                   XDG_DATA_HOME=os.path.join(self.folder, "data"),
                   XDG_CACHE_HOME=os.path.join(self.folder, "cache"),
                   GSETTINGS_BACKEND="memory",
                   # Whatever asks for the system bus finds none.
                   DBUS_SYSTEM_BUS_ADDRESS="unix:path=" + os.path.join(self.folder, "no-system-bus"))
        return env

    def _spawn(self, argv, **kwargs):
        process = subprocess.Popen(argv, env=self.env, stdin=subprocess.DEVNULL, **kwargs)
        self.processes.append(process)
        return process

    def _start_x_server(self):
        # The server picks a free display and writes its number to the pipe.
        read_end, write_end = os.pipe()
        self._spawn(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1024x768x24", "-nolisten", "tcp"],
                    pass_fds=[write_end])
        os.close(write_end)
        with os.fdopen(read_end) as display:
            number = display.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        self.env["DISPLAY"] = ":" + number
        wait_for("the X server to take connections", lambda: self._x_answers(number), 10)

    @staticmethod
    def _x_answers(number):
        with socket.socket(socket.AF_UNIX) as connection:
            try:
                connection.connect("/tmp/.X11-unix/X" + number)
                return True
            except OSError:
                return False

    def _start_session_bus(self):
        bus = self._spawn(["dbus-daemon", "--session", "--nofork", "--print-address=1"],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        address = bus.stdout.readline().strip()
        if not address:
            raise RuntimeError("dbus-daemon did not start")
        self.env["DBUS_SESSION_BUS_ADDRESS"] = address

    def _start_window_manager(self):
        # As on a desktop, a window manager gives the focus back to the
        # panel's window when a box over it closes.
        self._spawn(["openbox", "--sm-disable", "--config-file", os.devnull],
                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def _start_accessibility_bus(self):
        # The launcher takes org.a11y.Bus on the session bus just started,
        # which no other launcher can hold, and starts the bus readers use.
        # Programs ask the session bus for its address, as on a desktop.
        self._spawn([BUS_LAUNCHER, "--launch-immediately"], stderr=subprocess.DEVNULL)
        wait_for("the accessibility bus", self._accessibility_bus_address, 15)

    def _accessibility_bus_address(self):
        reply = subprocess.run(["dbus-send", "--session", "--print-reply=literal", "--dest=org.a11y.Bus",
                                "/org/a11y/bus", "org.a11y.Bus.GetAddress"],
                               env=self.env, capture_output=True, text=True, timeout=5)
        return reply.stdout.strip() if reply.returncode == 0 else None

    def become_reader(self):
        """Points this process at the session's buses; pyatspi is imported after."""
        os.environ.clear()
        os.environ.update(self.env)

    def start(self, argv):
        """Starts a program with accessibility on, as on a desktop with a reader."""
        env = dict(self.env, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb")
        process = subprocess.Popen(argv, env=env, stdin=subprocess.DEVNULL)
        self.processes.append(process)
        return process

    def close(self):
        for process in reversed(self.processes):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(5)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)
