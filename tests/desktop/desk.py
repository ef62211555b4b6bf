"""Shared by the desktop tests: the program as a process, and its windows as seen by assistive tools.
Everything waits for a condition; time limits only end what hangs."""

import contextlib
import fnmatch
import os
import pathlib
import subprocess
import tempfile
import time
import unittest

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from texts import LANGUAGE, tr  # noqa: E402

VIEWER = "* - Vantrel"  # the log viewer's name begins with its file name
PATIENCE = 9  # seconds until a failure
BIN = pathlib.Path(os.environ["VANTREL_BIN"])

# Roles by number, because releases of the accessibility library name some differently.
ROLES = {
    7: "check box",
    11: "combo box",
    29: "label",
    31: "list",
    41: "popup menu",
    42: "progress bar",
    43: "push button",
    44: "radio button",
    52: "spin button",
    55: "table",
    61: "text",
    64: "tool tip",
}

MARKS = [Atspi.StateType.ACTIVE, Atspi.StateType.FOCUSED, Atspi.StateType.CHECKED]

# No caching, because the program changes by itself.
Atspi.get_desktop(0).set_cache_mask(Atspi.Cache.NONE)


def until(what, question):
    """Polls until the result is true, and returns it. Objects may vanish meanwhile."""
    deadline = time.monotonic() + PATIENCE
    while True:
        answer = None
        with contextlib.suppress(GLib.Error):
            answer = question()
        if answer:
            return answer
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {PATIENCE} s for {what}, but saw\n{everything_in_sight()}")
        while GLib.MainContext.default().iteration(False):
            pass  # delivers the program's events
        time.sleep(0.02)


def everything_in_sight():
    """All windows of all programs as text, one line per accessible object."""
    lines = []

    def add(node, depth):
        with contextlib.suppress(GLib.Error):
            marks = "".join(f", {s.value_nick}" for s in MARKS if node.has(s))
            lines.append(f"{'  ' * depth}{node.role} {node.name!r}{marks}")
            for child in node.children():
                if child.showing and node.role != "table":
                    add(child, depth + 1)

    for program in Node(Atspi.get_desktop(0)).children():
        add(program, 1)
    return "\n".join(lines)


class Node:
    """An accessible object of the program."""

    def __init__(self, accessible):
        self.accessible = accessible

    @property
    def name(self):
        return self.accessible.get_name()

    @property
    def description(self):
        return self.accessible.get_description()

    @property
    def role(self):
        return ROLES.get(int(self.accessible.get_role())) or self.accessible.get_role_name()

    def has(self, state):
        return self.accessible.get_state_set().contains(state)

    @property
    def showing(self):
        return self.has(Atspi.StateType.SHOWING)

    @property
    def checked(self):
        return self.has(Atspi.StateType.CHECKED)

    @property
    def focused(self):
        return self.has(Atspi.StateType.FOCUSED)

    @property
    def text(self):
        return Atspi.Text.get_text(self.accessible, 0, -1)

    @property
    def actions(self):
        count = Atspi.Action.get_n_actions(self.accessible)
        return [Atspi.Action.get_action_name(self.accessible, i) for i in range(count)]

    def children(self):
        for i in range(self.accessible.get_child_count()):
            child = self.accessible.get_child_at_index(i)
            if child is not None:
                yield Node(child)

    def all_below(self):
        """All visible descendants, except the cells of tables."""
        for child in self.children():
            if not child.showing:
                continue
            yield child
            if child.role != "table":
                yield from child.all_below()

    def find(self, role, name):
        """The visible descendant with this role and name; waits for it."""
        return until(
            f"{role} {name!r}",
            lambda: next((n for n in self.all_below() if n.role == role and n.name == name), None),
        )

    def act(self, action):
        """Performs the action of this name as soon as it is available."""
        offered = until(
            f"{action} of {self.role} {self.name!r}",
            lambda: self.actions if action in self.actions else None,
        )
        Atspi.Action.do_action(self.accessible, offered.index(action))

    def press(self):
        self.act("Press")

    def toggle(self):
        """Ticks or clears it, and waits for the new state."""
        wanted = not self.checked
        self.act("Toggle")
        until(f"{self.name!r} to change", lambda: self.checked == wanted)

    def focus(self):
        self.act("SetFocus")
        until(f"the focus on {self.name!r}", lambda: self.focused)

    def type(self, text):
        self.focus()
        Atspi.EditableText.set_text_contents(self.accessible, text)
        until(f"{text!r} in {self.name!r}", lambda: self.text == text)

    def cell(self, row, column):
        return Node(Atspi.Table.get_accessible_at(self.accessible, row, column))

    def header(self, column):
        """A cell of a table, whose children begin with the corner and the column headers."""
        return Node(self.accessible.get_child_at_index(column + 1))

    def box(self, row):
        """The check box in a row of a table, or in the header for -1."""
        holder = self.header(0) if row < 0 else self.cell(row, 0)
        return next(child for child in holder.children() if child.role == "check box")

    def column(self, column):
        """The texts of a table column, up to the first empty cell."""
        texts = []
        for row in range(Atspi.Table.get_n_rows(self.accessible)):
            text = self.cell(row, column).name
            if not text:
                break
            texts.append(text)
        return texts


def key(*keys):
    """Presses keys, by X names, in the active window."""
    subprocess.run(["xdotool", "key", *keys], check=True)


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def clipboard():
    read = subprocess.run(
        ["xclip", "-out", "-selection", "clipboard"], capture_output=True, timeout=PATIENCE
    )
    return read.stdout.decode()


class Program:
    """The program in its own sample home, with additional environment variables."""

    def __init__(self, home=None, **variables):
        self.variables = variables
        self.folder = tempfile.TemporaryDirectory()
        scratch = pathlib.Path(self.folder.name)
        self.home = home or scratch / "home"
        self.tools = scratch / "tools"
        self.tools.mkdir()
        subprocess.run(
            [BIN / "vantrel-sample-home", "--log-lines", "20", "--language", LANGUAGE, self.home],
            check=True,
        )
        self.sdk = self.home / "QZSDK"
        self.zip = self.sdk / "UserLogInfo.zip"
        self.output = open(scratch / "output", "w+b")
        self.process = None
        self.shown = []  # menus, newest last
        self.listener = Atspi.EventListener.new(self.take_note)
        self.listener.register("object:state-changed:showing")

    def take_note(self, event):
        with contextlib.suppress(GLib.Error):
            if event.detail1 and Node(event.source).role == "popup menu":
                self.shown.append(Node(event.source))

    def tool(self, name, script):
        """Overrides a system program."""
        path = self.tools / name
        path.write_text("#!/bin/sh\n" + script)
        path.chmod(0o700)

    def launch(self):
        """Starts a copy in this home."""
        changed = {
            "HOME": str(self.home),
            "XDG_CONFIG_HOME": str(self.home / ".config"),
            "XDG_CACHE_HOME": self.folder.name,
            "TMPDIR": self.folder.name,
            "PATH": f"{self.tools}:{os.environ['PATH']}",
            "LC_ALL": "C.UTF-8",
            "QT_QPA_PLATFORM": "xcb",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            # The toolkit keeps some memory until exit.
            "ASAN_OPTIONS": "detect_leaks=0",
        }
        return subprocess.Popen(
            [BIN / "Vantrel"],
            cwd=self.home,  # has no skin
            env={**os.environ, **changed, **self.variables},
            stdin=subprocess.DEVNULL,
            stdout=self.output,
            stderr=subprocess.STDOUT,
        )

    def start(self):
        self.process = self.launch()
        return self.window("Vantrel")

    def window(self, name):
        """The window of this name or pattern, once it is active."""

        def look():
            window = next((w for w in self.windows() if fnmatch.fnmatchcase(w.name, name)), None)
            return window if window and window.has(Atspi.StateType.ACTIVE) else None

        return until(f"the window {name!r}", look)

    def windows(self):
        desktop = Atspi.get_desktop(0)
        for i in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(i)
            if application is not None and application.get_process_id() == self.process.pid:
                return [w for w in Node(application).children() if w.showing]
        return []

    def menu(self, open_it):
        """The menu that appears when "open_it" is called, with its entries by name."""
        self.shown.clear()
        open_it()
        menu = until("a menu", lambda: self.shown[-1] if self.shown else None)
        return {entry.name: entry for entry in menu.children()}

    def closed(self, name):
        until(
            f"{name!r} to close",
            lambda: not any(fnmatch.fnmatchcase(w.name, name) for w in self.windows()),
        )

    def remove_shared_memory(self):
        """Shared memory outlives a killed program, and the system has only 4,096 segments."""
        for key_file in pathlib.Path(self.folder.name).glob("qipc_sharedmemory_*"):
            about = key_file.stat()
            key = ord("Q") << 24 | (about.st_dev & 0xFF) << 16 | about.st_ino & 0xFFFF  # ftok()
            subprocess.run(["ipcrm", "--shmem-key", hex(key)], stderr=subprocess.DEVNULL)

    def end(self):
        self.listener.deregister("object:state-changed:showing")
        if self.process is not None and self.process.poll() is None:
            # Terminated rather than killed, so that it writes its coverage data.
            self.process.terminate()
            try:
                self.process.wait(20)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
        self.remove_shared_memory()
        self.output.seek(0)
        output = self.output.read().decode(errors="replace")
        self.output.close()
        self.folder.cleanup()
        return output


class DesktopTest(unittest.TestCase):
    """A test with a running program; "prepare" may change its home first."""

    def setUp(self):
        self.program = Program()
        self.addCleanup(self.end_program)
        self.prepare()
        self.main = self.program.start()
        self.files = self.main.find("table", tr("SDK log files"))

    def prepare(self):
        pass

    def end_program(self):
        print(f"\nOutput of the program:\n{self.program.end()}", flush=True)
        print("(That there is no slot receiveMessage is intended: see src/app/main.cpp.)", flush=True)

    def assert_tab_order(self, window, stops, more=lambda: []):
        """Tab moves through the controls of these names and from the last one back to the
        first, which has the focus; "more" maps names of controls that are not in the window."""

        def focused():
            return next((n.name for n in [*window.all_below(), *more()] if n.focused), None)

        for stop in [*stops[1:], stops[0]]:
            key("Tab")
            until(f"the focus on {stop!r}", lambda name=stop: focused() == name)

    def finish(self, dialog, name, button):
        """Accepts a file dialog with this file."""
        dialog.find("text", tr("File name:")).type(str(name))
        dialog.find("push button", button).press()
        self.program.closed(dialog.name)
