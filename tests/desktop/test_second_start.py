"""A second start does not affect the first copy's window, in front or not."""

import subprocess

from desk import PATIENCE, DesktopTest, output_of, tr, until, unittest


class SecondStart(DesktopTest):
    def setUp(self):
        super().setUp()
        self.own = output_of("xdotool", "search", "--onlyvisible", "--name", "^Vantrel$").split()[-1]
        output_of("xdotool", "windowmove", "--sync", self.own, "150", "60")
        until("the window in front", lambda: self.active() == self.own)

    def desktop(self):
        """Stacking order, active window, and the first copy's geometry and state."""
        root = output_of("xprop", "-root", "_NET_CLIENT_LIST_STACKING", "_NET_ACTIVE_WINDOW")
        geometry = output_of("xdotool", "getwindowgeometry", "--shell", self.own)
        state = output_of("xprop", "-id", self.own, "_NET_WM_STATE", "WM_STATE", "WM_HINTS")
        return root + geometry + state

    def second_start_changes_nothing(self):
        before = self.desktop()
        for _ in range(2):
            self.assertEqual(self.program.launch().wait(PATIENCE), 0)
        # The first copy answers this query after it has handled all earlier events.
        self.assertTrue(self.main.find("push button", tr("Close")).showing)
        self.assertEqual(self.desktop(), before)
        self.assertIsNone(self.program.process.poll())

    def test_in_front(self):
        self.second_start_changes_nothing()

    def test_behind_another_window(self):
        other = subprocess.Popen(
            ["xev", "-geometry", "600x500+100+100", "-name", "another"], stdout=subprocess.DEVNULL
        )
        self.addCleanup(other.wait)
        self.addCleanup(other.kill)
        until("the other window in front", lambda: self.active() not in ("0", self.own))
        self.second_start_changes_nothing()

    def test_minimised(self):
        output_of("xdotool", "windowminimize", self.own)
        until(
            "the window to go",
            lambda: "Iconic" in output_of("xprop", "-id", self.own, "WM_STATE")
            and self.active() == "0",  # which the window manager sets last
        )
        self.second_start_changes_nothing()

    def active(self):
        words = output_of("xprop", "-root", "_NET_ACTIVE_WINDOW").split()
        return str(int(words[-1], 16)) if words[-1].startswith("0x") else "0"


if __name__ == "__main__":
    unittest.main(verbosity=2)
