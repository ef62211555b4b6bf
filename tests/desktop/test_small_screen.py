"""A screen that is smaller than the main window."""

from desk import DesktopTest, output_of, until, unittest


class SmallScreen(DesktopTest):
    def prepare(self):
        # Smaller text than usual. At Qt's scale for it, 0.9375, the window would fit without being shrunk.
        self.program.variables["QT_FONT_DPI"] = "90"

    def test_the_main_window_fills_it_at_full_scale(self):
        def geometry():
            words = output_of("xdotool", "getactivewindow", "getwindowgeometry", "--shell").split()
            return [word for word in words if word.startswith(("X=", "Y=", "WIDTH=", "HEIGHT="))]

        until("the window to fit", lambda: geometry() == ["X=0", "Y=0", "WIDTH=740", "HEIGHT=600"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
