"""Takes the pictures for tools/screenshots: LOOK SCALE FOLDER."""

import fcntl
import pathlib
import shutil
import subprocess
import sys

from desk import Program, key, until
from texts import LANGUAGE, tr

LOOK, SCALE, OUT = sys.argv[1], int(sys.argv[2]), pathlib.Path(sys.argv[3])
SHORT_NAME = {"english": "en", "chinese": "cn"}[LANGUAGE]

# What a dark desktop hands to the toolkit: the colours of its own windows.
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


def shot(name):
    """The picture of the screen that shows nothing new any more."""
    area = window_area() if LOOK == "docs" else None
    pictures = [take(area)]

    def still():
        pictures.append(take(area))
        return pictures[-1] == pictures[-2]

    until("a still picture", still)
    keep(name, pictures[-1])


def take(area=None):
    crop = ["-crop", area, "+repage"] if area else []
    return output("/usr/bin/import-im6.q16", "-silent", "-window", "root", *crop, "png:-")


def keep(name, picture):
    kind = "" if LOOK in ("docs", "plain") else f"-{LOOK}"
    target = OUT / f"{name}{kind}-{SHORT_NAME}-{SCALE}.png"
    few_colours = ["-strip", "+dither", "-colors", "255"]
    subprocess.run(
        ["/usr/bin/convert-im6.q16", "png:-", *few_colours, f"png8:{target}"],
        input=picture,
        check=True,
    )
    print(target, flush=True)


def window_area():
    """Where the window with the keyboard lies on the screen."""
    words = output("xdotool", "getactivewindow", "getwindowgeometry", "--shell").decode().split()
    at = dict(word.split("=") for word in words if "=" in word)
    return "{WIDTH}x{HEIGHT}+{X}+{Y}".format(**at)


def output(*command):
    return subprocess.run(command, capture_output=True, check=True).stdout


class Tour:
    def __init__(self):
        variables = {"QT_SCALE_FACTOR": str(SCALE / 100)}
        if LOOK == "dark":
            variables.update(XDG_CURRENT_DESKTOP="KDE", KDE_SESSION_VERSION="5")
        # The documents show a path that somebody could have.
        home = pathlib.Path("/tmp/anna") if LOOK == "docs" else None
        self.program = Program(home, **variables)
        self.home = self.program.home
        (self.home / ".config" / "kdeglobals").write_text(DARK)
        self.lay_out()
        # The journal keeps its answer back until the wait dialog has had its picture taken.
        self.gate = open(self.home / "gate", "w")
        fcntl.flock(self.gate, fcntl.LOCK_EX)
        self.program.tool("journalctl", f'exec flock --shared "{self.gate.name}" echo event\n')

    def lay_out(self):
        sdk = self.program.sdk
        if LOOK == "short":
            sdk.rename(self.home / "elsewhere")
        if LOOK == "long":
            name = "a_camera_client_with_a_name_that_nobody_would_give_to_anything"
            (sdk / name).mkdir()
            for i in range(60):
                (sdk / "QZviewer" / f"{name}_{name}_{i}.log").write_text("x" * 12345678)
            line = "2025-03-14 09:59:20,279 ERROR [5849] [qzsdk.transport.of.a.very.long.name] "
            (sdk / "QZviewer" / "newest.log").write_text((line + "word " * 5000 + "\n") * 20)

    def run(self):
        self.main = self.program.start()
        shot("main")
        if LOOK != "docs":
            self.popups()
        if LOOK != "short":
            self.viewer()
        self.settings()
        self.export()

    def popups(self):
        source = self.main.find("combo box", "QZviewer") if LOOK != "short" else None
        self.main.find("push button", "Choose the zip file").press()
        dialog = self.program.window(tr("Save ZIP File"))
        shot("save")
        dialog.find("push button", "Cancel").press()
        self.program.closed(dialog.name)
        if source is not None:
            source.press()
            source.find("list", "Log source")
            shot("main-sources")
            key("Escape")
            files = self.main.find("table", "SDK log files")
            files.focus()
            key("Down", "Down")
            until("the row", lambda: files.cell(2, 1).focused)
            self.program.menu(lambda: key("Menu"))
            shot("main-menu")
            key("Escape")
        self.main.find("push button", tr("Export")).focus()
        shot("main-focus")

    def viewer(self):
        self.main.find("table", "SDK log files").cell(0, 1).press()
        viewer = self.program.window(tr("LogViewer"))
        lines = viewer.find("table", "Log lines")
        until("the lines", lambda: lines.cell(2, 3).name)
        shot("viewer")
        if LOOK != "docs":
            viewer.find("check box", "DEBUG").toggle()
            field = viewer.find("text", "Search")
            field.type("camera")
            key("Return")
            shot("viewer-search")
            field.type("")
            key("Return")
            self.program.menu(viewer.find("push button", "Choose columns").press)
            key("Down")
            shot("viewer-columns")
            key("Escape")
            lines.focus()
            key("Down")
            self.program.menu(lambda: key("Menu"))
            shot("viewer-menu")
            key("Escape")
        viewer.find("push button", "Close").press()
        self.program.closed(tr("LogViewer"))

    def settings(self):
        self.main.find("push button", "Log level settings").press()
        settings = self.program.window(tr("LogSettingsDlg"))
        shot("settings")
        settings.find("push button", "Close").press()
        self.program.closed(tr("LogSettingsDlg"))

    def export(self):
        if LOOK == "short":
            return  # without the SDK's folder there is nowhere to gather
        self.main.find("check box", tr("System Log")).toggle()
        self.main.find("push button", tr("Export")).press()
        wait = self.program.window(tr("Export"))
        wait.find("label", tr("Exporting information..."))
        if LOOK != "docs":
            keep("wait", take())  # never still
        self.gate.close()
        self.main.find("push button", tr("View"))
        shot("notice")


tour = Tour()
try:
    tour.run()
finally:
    if LOOK == "docs":
        shutil.rmtree(tour.home)
    said = tour.program.end()
    if sys.exc_info()[0] is not None:
        print(said)
