"""The log settings through their accessible interfaces."""

from desk import DesktopTest, key, tr, until, unittest

LEVELS = ["INFO", "DEBUG", "FATAL"]


class LogSettings(DesktopTest):
    def setUp(self):
        super().setUp()
        self.file = self.program.home / "Client" / "SDKLOG_default.properties"
        self.settings = self.open()

    def open(self):
        self.main.find("push button", tr("Log level settings")).press()
        return self.program.window(tr("LogSettingsDlg"))

    def level(self, name):
        return self.settings.find("radio button", name)

    def until_level(self, wanted, file=None):
        """Waits for this level in the file and on its button only."""
        lines = [
            f"log4cpp.rootCategory = {wanted}",
            f"log4cpp.category.qzsdk = {wanted}, a_qzsdk",
        ]
        path = file or self.file
        until(f"{wanted} in {path}", lambda: path.read_text().splitlines()[1:3] == lines)
        until(
            f"{wanted} on its button",
            lambda: [name for name in LEVELS if self.level(name).checked] == [wanted],
        )

    def test_every_control_has_its_name(self):
        roles = {"push button", "radio button", "text", "spin button"}
        named = {(n.role, n.name) for n in self.settings.all_below() if n.role in roles}
        self.assertEqual(
            named,
            {
                ("push button", tr("Close")),
                *(("radio button", level) for level in LEVELS),
                ("text", tr("Log config file")),
                ("push button", tr("Select Log Config File")),
            },
        )
        self.settings.find("label", tr("Log Level Setting"))

    def test_tab_reaches_everything(self):
        until("the first focus", lambda: self.level("INFO").focused)
        choose = tr("Select Log Config File")
        self.assert_tab_order(self.settings, ["INFO", tr("Log config file"), choose, tr("Close")])
        self.settings.find("push button", tr("Close")).focus()
        key("space")
        self.program.closed(tr("LogSettingsDlg"))

    def test_each_level_is_written(self):
        self.until_level("INFO")
        for level in ["DEBUG", "FATAL", "INFO"]:
            self.level(level).toggle()
            self.until_level(level)

    def test_the_arrow_keys_change_the_level(self):
        until("the focus", lambda: self.level("INFO").focused)
        key("Right")
        self.until_level("DEBUG")
        key("Left")
        self.until_level("INFO")

    def test_another_file_can_be_chosen(self):
        other = self.program.home / "other.properties"
        other.write_text(self.file.read_text().replace("INFO", "FATAL"))
        self.settings.find("push button", tr("Select Log Config File")).press()
        self.finish(self.program.window(tr("Select Log Config File")), other, tr("Open"))
        path = self.settings.find("text", tr("Log config file"))
        until("the path", lambda: path.text == str(other))
        self.until_level("FATAL", other)
        self.level("DEBUG").toggle()
        self.until_level("DEBUG", other)
        self.assertIn("INFO", self.file.read_text())

    def test_closing_keeps_the_level(self):
        self.level("DEBUG").toggle()
        self.until_level("DEBUG")
        self.settings.find("push button", tr("Close")).press()
        self.program.closed(tr("LogSettingsDlg"))
        self.settings = self.open()
        self.until_level("DEBUG")


if __name__ == "__main__":
    unittest.main(verbosity=2)
