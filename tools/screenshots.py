"""Takes the pictures for tools/screenshots: LOOK SCALE FOLDER."""

import fcntl
import pathlib
import shutil
import subprocess
import sys

from desk import VIEWER, Atspi, Program, key, until
from texts import LANGUAGE, tr

LOOK, SCALE, OUT = sys.argv[1], int(sys.argv[2]), pathlib.Path(sys.argv[3])
SHORT_NAME = {"english": "en", "chinese": "cn"}[LANGUAGE]

# The colours that a dark desktop passes to the toolkit.
DARK = """[General]
ColorScheme=Dark
[Colors:Window]
BackgroundNormal=35,38,41
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=20,22,24
BackgroundAlternate=29,31,34
ForegroundNormal=252,252,252
[Colors:Button]
BackgroundNormal=41,44,48
ForegroundNormal=252,252,252
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
[Colors:Tooltip]
BackgroundNormal=41,44,48
ForegroundNormal=252,252,252
"""


# A line in the SDK's format with this level.
LINE = "2025-03-14 09:59:20,279 {} [5849] [QZSDK] word\n"


def shot(name):
    """A picture of the screen once it has stopped changing."""
    area = window_area() if LOOK == "docs" else None
    pictures = [take(area)]

    def still():
        pictures.append(take(area))
        return pictures[-1] == pictures[-2]

    until("a still picture", still)
    keep(name, pictures[-1])


def take(area=None):
    crop = ["-crop", area, "+repage"] if area else []
    return output("/usr/bin/import", "-silent", "-window", "root", *crop, "png:-")


def keep(name, picture):
    kind = "" if LOOK in ("docs", "plain") else f"-{LOOK}"
    target = OUT / f"{name}{kind}-{SHORT_NAME}-{SCALE}.png"
    few_colours = ["-strip", "+dither", "-colors", "255"]
    subprocess.run(
        ["/usr/bin/convert", "png:-", *few_colours, f"png8:{target}"],
        input=picture,
        check=True,
    )
    print(target, flush=True)


def window_area():
    """The geometry of the active window."""
    words = output("xdotool", "getactivewindow", "getwindowgeometry", "--shell").decode().split()
    at = dict(word.split("=") for word in words if "=" in word)
    return "{WIDTH}x{HEIGHT}+{X}+{Y}".format(**at)


def output(*command):
    return subprocess.run(command, capture_output=True, check=True).stdout


def long_line():
    line = LINE.format("ERROR").replace("QZSDK", "qzsdk.transport.of.a.very.long.name")
    return line.replace("word", "word " * 5000)


def point_at(node=None):
    """Moves the pointer onto it, or away from all windows, so that nothing is hovered."""
    x = y = 0
    if node is not None:
        area = Atspi.Component.get_extents(node.accessible, Atspi.CoordType.SCREEN)
        x, y = area.x + area.width // 2, area.y + area.height // 2
    subprocess.run(["xdotool", "mousemove", "--sync", str(x), str(y)], check=True)


class Tour:
    def __init__(self):
        variables = {"QT_SCALE_FACTOR": str(SCALE / 100)}
        if LOOK == "dark":
            variables.update(XDG_CURRENT_DESKTOP="KDE", KDE_SESSION_VERSION="5")
        # The documents show a realistic path.
        home = pathlib.Path("/tmp/anna") if LOOK == "docs" else None
        self.program = Program(home, **variables)
        self.home = self.program.home
        (self.home / ".config" / "kdeglobals").write_text(DARK)
        self.lay_out()
        # The journal blocks until the picture of the wait dialog is taken.
        self.gate = open(self.home / "gate", "w")
        fcntl.flock(self.gate, fcntl.LOCK_EX)
        self.program.tool("journalctl", f'exec flock --shared "{self.gate.name}" echo event\n')

    def lay_out(self):
        sdk = self.program.sdk
        if LOOK in ("short", "bare"):
            sdk.rename(self.home / "elsewhere")
        if LOOK == "bare":
            shutil.rmtree(self.home / ".config" / "Pemberk")
        if LOOK == "odd":
            self.program.sdk.joinpath("QZempty").mkdir()
            levels = ["INFO", "ERROR", "WARN", "DEBUG"]
            sdk.joinpath("QZviewer", "levels.log").write_text("".join(map(LINE.format, levels)))
            sdk.joinpath("QZviewer", "long.log").write_text(long_line() * 20)
            sdk.joinpath("QZviewer", "empty.log").write_text("")
            settings = self.home / "Client" / "SDKLOG_default.properties"
            settings.write_text("log4cpp.rootCategory = INFO\n")
        if LOOK == "long":
            name = "a_camera_client_with_a_name_that_nobody_would_give_to_anything"
            (sdk / name).mkdir()
            for i in range(60):
                (sdk / "QZviewer" / f"{name}_{name}_{i}.log").write_text("x" * 12345678)
            (sdk / "QZviewer" / "newest.log").write_text(long_line() * 20)

    def run(self):
        point_at()
        if LOOK == "bare":
            self.bare()
        elif LOOK == "keys":
            self.keys()
        elif LOOK == "odd":
            self.odd()
        else:
            self.usual()

    def usual(self):
        self.main = self.program.start()
        shot("main")
        if LOOK != "docs":
            self.popups()
        if LOOK != "short":
            self.viewer()
        self.settings()
        self.export()

    def bare(self):
        """Without the SDK folder and without a registered client."""
        self.program.process = self.program.launch()
        dialog = self.program.window("Select Log Config File")
        shot("start")
        dialog.find("push button", tr("Cancel")).press()
        self.main = self.program.window("Vantrel")
        self.settings()

    def keys(self):
        """Every tab stop in every window."""
        self.main = self.program.start()
        files = self.main.find("table", tr("SDK log files"))
        self.stops("main", lambda: [*self.main.all_below(), files.box(-1)])
        key("alt+Down")
        self.main.find("list", tr("Log source"))
        key("Up")
        shot("main-sources")
        key("Escape")
        files.focus()
        key("Down", "Down", "space")
        until("the row", lambda: files.cell(2, 1).focused)
        shot("main-row")
        self.program.menu(lambda: key("Menu"))
        key("Down")
        shot("main-menu")
        key("Escape", "Return")
        viewer = self.program.window(VIEWER)
        self.stops("viewer", viewer.all_below)
        viewer.find("push button", tr("Close")).press()
        self.program.closed(VIEWER)
        self.main.find("push button", tr("Log level settings")).press()
        self.stops("settings", self.program.window(tr("LogSettingsDlg")).all_below)

    def stops(self, name, nodes):
        def focused():
            return next((f"{n.role} {n.name}" for n in nodes() if n.focused), None)

        seen = [until("a focus", focused)]
        while len(seen) < 2 or seen[-1] != seen[0]:
            shot(f"{name}-{len(seen):02}")
            key("Tab")
            seen.append(until("the next focus", lambda: focused() not in (None, seen[-1]) and focused()))

    def odd(self):
        self.main = self.program.start()
        files = self.main.find("table", tr("SDK log files"))
        self.tooltip("main-tooltip", self.main.find("push button", tr("Log level settings")))
        self.open(files, "empty.log")
        shot("viewer-empty")
        self.close(VIEWER)
        viewer = self.open(files, "long.log")
        self.tooltip("viewer-tooltip", viewer.find("table", tr("Log lines")).cell(3, 3))
        viewer.find("text", tr("Search")).type("nothing like it")
        key("Return")
        shot("viewer-found-nothing")
        self.close(VIEWER)
        viewer = self.open(files, "levels.log")
        for level in ["INFO", "ERROR", "WARN", "DEBUG"]:
            viewer.find("check box", level).toggle()
        shot("viewer-hidden")
        self.close(VIEWER)
        self.main.find("push button", tr("Log level settings")).press()
        settings = self.program.window(tr("LogSettingsDlg"))
        settings.find("radio button", "DEBUG").act("Toggle")
        until("the grey", lambda: not settings.find("radio button", "INFO").has(Atspi.StateType.ENABLED))
        shot("settings-grey")

    def open(self, files, name):
        files.cell(files.column(2).index(name), 2).press()
        return self.program.window(VIEWER)

    def close(self, name):
        self.program.window(name).find("push button", tr("Close")).press()
        self.program.closed(name)

    def tooltip(self, name, node):
        point_at(node)
        until("the tool tip", lambda: any(w.role == "tool tip" for w in self.program.windows()))
        shot(name)
        point_at()

    def popups(self):
        source = self.main.find("combo box", "QZviewer") if LOOK != "short" else None
        self.main.find("push button", tr("Choose the zip file")).press()
        dialog = self.program.window(tr("Save ZIP File"))
        shot("save")
        dialog.find("push button", tr("Cancel")).press()
        self.program.closed(dialog.name)
        if source is not None:
            source.press()
            source.find("list", tr("Log source"))
            shot("main-sources")
            key("Escape")
            files = self.main.find("table", tr("SDK log files"))
            files.focus()
            key("Down", "Down")
            until("the row", lambda: files.cell(2, 1).focused)
            self.program.menu(lambda: key("Menu"))
            shot("main-menu")
            key("Escape")
        if LOOK == "long":
            self.choose(source, "Home")
            shot("main-source")
            self.choose(source, "End")
        self.main.find("push button", tr("Export")).focus()
        shot("main-focus")

    def choose(self, source, where):
        source.press()
        source.find("list", tr("Log source"))
        key(where, "Return")

    def viewer(self):
        self.main.find("table", tr("SDK log files")).cell(0, 1).press()
        viewer = self.program.window(VIEWER)
        lines = viewer.find("table", tr("Log lines"))
        until("the lines", lambda: lines.cell(2, 3).name)
        shot("viewer")
        if LOOK != "docs":
            viewer.find("check box", "DEBUG").toggle()
            field = viewer.find("text", tr("Search"))
            field.type("camera")
            key("Return")
            shot("viewer-search")
            field.type("")
            key("Return")
            self.program.menu(viewer.find("push button", tr("Choose columns")).press)
            key("Down")
            shot("viewer-columns")
            key("Escape")
            lines.focus()
            key("Down")
            self.program.menu(lambda: key("Menu"))
            shot("viewer-menu")
            key("Escape")
        viewer.find("push button", tr("Close")).press()
        self.program.closed(VIEWER)

    def settings(self):
        self.main.find("push button", tr("Log level settings")).press()
        settings = self.program.window(tr("LogSettingsDlg"))
        shot("settings")
        settings.find("push button", tr("Close")).press()
        self.program.closed(tr("LogSettingsDlg"))

    def export(self):
        if LOOK == "short":
            return  # exports need the SDK folder
        self.main.find("check box", tr("System Log")).toggle()
        self.main.find("push button", tr("Export")).press()
        wait = self.program.window(tr("Export"))
        wait.find("label", tr("Exporting information..."))
        if LOOK != "docs":
            wait.find("progress bar", tr("Exporting information..."))
            keep("wait", take())  # always animated
        self.gate.close()
        self.main.find("push button", tr("View"))
        shot("notice")


tour = Tour()
try:
    tour.run()
finally:
    if LOOK == "docs":
        shutil.rmtree(tour.home)
    printed = tour.program.end()
    if sys.exc_info()[0] is not None:
        print(printed)
