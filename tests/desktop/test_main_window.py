"""The main window, the wait dialog and the notice through their accessible interfaces."""

import fcntl
import subprocess
import zipfile

from desk import VIEWER, PATIENCE, DesktopTest, key, tr, until, unittest

ITEMS = [
    "SDK Log",
    "NIC Information",
    "System Log",
    "System Information",
    "System Dump",
    "Client Dump",
]
CONTROLS = {"push button", "check box", "radio button", "combo box", "list", "text", "table"}


class Names(DesktopTest):
    def test_every_control_has_its_name(self):
        named = [(n.role, n.name) for n in self.main.all_below() if n.role in CONTROLS]
        self.assertEqual(
            sorted(named),
            sorted(
                [
                    ("push button", tr("Close")),
                    ("combo box", "QZviewer"),  # its value is its name; a label relation describes it
                    ("list", tr("Log source")),
                    ("push button", tr("Log level settings")),
                    ("table", tr("SDK log files")),
                    *(("check box", tr(item)) for item in ITEMS),
                    ("text", tr("Export path")),
                    ("push button", tr("Choose the zip file")),
                    ("push button", tr("Export")),
                ]
            ),
        )

    def test_the_log_source_is_labelled(self):
        label = self.main.find("label", tr("LogSource(Process Name)"))
        targets = [
            relation.get_target(0).get_name()
            for relation in label.accessible.get_relation_set()
            if relation.get_relation_type().value_nick == "label-for"
        ]
        self.assertEqual(targets, ["QZviewer"])

    def test_headers_and_boxes_of_the_table_have_names(self):
        headers = [self.files.header(i).name for i in range(1, 4)]
        self.assertEqual(headers, [tr("File Time"), tr("File Name"), tr("File Size")])
        self.assertEqual(self.files.box(-1).name, tr("All rows"))
        names = self.files.column(2)
        self.assertEqual([self.files.box(row).name for row in range(len(names))], names)


class Look(DesktopTest):
    def test_uses_the_skin_beside_the_program(self):
        shot = ["import", "-silent", "-window", "Vantrel", "-crop", "1x1+5+5", "-depth", "8", "rgb:-"]
        title_bar = bytes.fromhex("1F2A37")  # as the style sheet says
        until(
            "the title bar's colour",
            lambda: subprocess.run(shot, capture_output=True).stdout == title_bar,
        )


class Keyboard(DesktopTest):
    def test_tab_reaches_everything_in_reading_order(self):
        until("the first focus", lambda: self.main.find("combo box", "QZviewer").focused)
        self.assert_tab_order(
            self.main,
            [
                "QZviewer",
                tr("Log level settings"),
                tr("All rows"),
                tr("SDK log files"),
                *(tr(item) for item in ITEMS),
                tr("Export path"),
                tr("Choose the zip file"),
                tr("Export"),
                tr("Close"),
            ],
            lambda: [self.files.box(-1)],
        )

    def test_space_ticks_the_row_and_return_opens_its_log(self):
        self.files.focus()
        key("Down")
        until("the second row", lambda: self.files.cell(1, 1).focused)
        key("space")
        until("the tick to go", lambda: not self.files.box(1).checked)
        self.assertTrue(self.files.box(0).checked)
        key("Return")
        self.program.window(VIEWER)


class Export(DesktopTest):
    def prepare(self):
        # The journal blocks until the test has seen the wait dialog.
        self.gate = open(self.program.home / "gate", "w")
        self.addCleanup(self.gate.close)
        fcntl.flock(self.gate, fcntl.LOCK_EX)
        self.program.tool(
            "journalctl",
            f'printenv QT_XCB_GL_INTEGRATION >"{self.program.home}/inherited"\n'
            f'exec flock --shared "{self.gate.name}" echo "MESSAGE=from the journal"\n',
        )
        self.opened = self.program.home / "opened"
        self.program.tool(
            "xdg-open",
            f'printf %s "$1" >"{self.opened}.part"\nmv "{self.opened}.part" "{self.opened}"\n',
        )

    def test_packs_what_is_ticked_and_shows_the_folder(self):
        for item in ITEMS[1:]:
            self.main.find("check box", tr(item)).toggle()
        left_out = self.files.box(2)
        left_out.toggle()
        logs = self.files.column(2)
        self.assertFalse(self.files.box(-1).checked)

        self.main.find("push button", tr("Export")).press()
        wait = self.program.window(tr("Export"))
        wait.find("label", tr("Exporting information..."))
        bar = wait.find("progress bar", tr("Exporting information..."))
        self.assertRegex(bar.description, "^[0-9]+%$")
        self.gate.close()
        self.program.closed(tr("Export"))

        self.main.find("dialog", tr("Export info finished !"))
        self.main.find("label", tr("Export info finished !"))
        self.main.find("push button", tr("View")).press()
        url = until("the folder", lambda: self.opened.exists() and self.opened.read_text())
        self.assertEqual(url, f"file:///{self.program.sdk}")
        # The program sets this variable for itself, not for its child processes.
        self.assertNotEqual((self.program.home / "inherited").read_text(), "none\n")

        with zipfile.ZipFile(self.program.zip) as archive:
            self.assertIsNone(archive.testzip())
            names = archive.namelist()
            for events in ["ApplicationEvents.evtx", "SystemEvents.evtx"]:
                self.assertEqual(archive.read(events), b"MESSAGE=from the journal\n")
        packed = {name for name in names if name.startswith("SDKLOG/q")}
        self.assertEqual(packed, {f"SDKLOG/{log}" for log in logs if log != left_out.name})
        for report in ["NICInfo.txt", "SystemInfo.txt", "ClientDump.zip"]:
            self.assertIn(report, names)
        self.assertEqual(len([n for n in names if n.startswith("SDKLOG/gentl_cxp_log/")]), 3)


class Rows(DesktopTest):
    def exported(self, entry):
        """Exports by this entry of the context menu; returns the names of the logs in the zip."""
        self.program.zip.unlink(missing_ok=True)
        self.files.focus()
        entries = self.program.menu(lambda: key("Menu"))
        self.assertEqual(
            list(entries), [tr("Export All SDK Log"), tr("Export Selected SDK Log")]
        )
        entries[tr(entry)].press()
        staging = self.program.sdk / "LogInfo"
        until("the zip", lambda: self.program.zip.exists() and not staging.exists())
        key("Escape")
        with zipfile.ZipFile(self.program.zip) as archive:
            return {n[len("SDKLOG/") :] for n in archive.namelist() if n.startswith("SDKLOG/q")}

    def test_the_context_menu_exports_the_ticked_rows_or_all(self):
        logs = self.files.column(2)
        self.files.box(-1).toggle()
        self.assertFalse(any(self.files.box(row).checked for row in range(len(logs))))
        self.files.box(1).toggle()
        self.assertEqual(self.exported("Export Selected SDK Log"), {logs[1]})
        self.assertEqual(self.exported("Export All SDK Log"), set(logs))

    def test_the_box_for_sdk_logs_ticks_every_row(self):
        box = self.main.find("check box", tr("SDK Log"))
        box.toggle()
        until("no tick", lambda: not self.files.box(0).checked and not self.files.box(-1).checked)
        box.toggle()
        until("the ticks", lambda: self.files.box(0).checked and self.files.box(-1).checked)

    def test_another_source_lists_its_logs(self):
        source = self.main.find("combo box", "QZviewer")
        source.press()
        choices = source.find("list", tr("Log source"))
        names = [choice.name for choice in choices.children()]
        away = names.index("QZgrabber") - names.index("QZviewer")
        key(*["Down" if away > 0 else "Up"] * abs(away), "Return")
        self.main.find("combo box", "QZgrabber")
        until("its logs", lambda: self.files.column(2)[:1] == ["qzgrabber.log"])


class Paths(DesktopTest):
    def test_the_zip_goes_where_the_file_dialog_says(self):
        shown = self.main.find("text", tr("Export path"))
        self.assertEqual(shown.text, f"{self.program.home}/QZSDK/UserLogInfo.zip")
        choose = self.main.find("push button", tr("Choose the zip file"))

        choose.press()
        dialog = self.program.window(tr("Save ZIP File"))
        dialog.find("push button", tr("Cancel")).press()
        self.program.closed(dialog.name)
        self.assertEqual(shown.text, f"{self.program.home}/QZSDK/UserLogInfo.zip")

        chosen = self.program.home / "for support.zip"
        choose.press()
        self.finish(self.program.window(tr("Save ZIP File")), chosen, tr("Save"))
        until("the path", lambda: shown.text == str(chosen))
        self.main.find("push button", tr("Export")).press()
        self.main.find("push button", tr("View"))
        self.assertTrue(zipfile.is_zipfile(chosen))
        self.assertFalse(self.program.zip.exists())

    def test_the_close_button_ends_the_program(self):
        self.main.find("push button", tr("Close")).press()
        self.assertEqual(self.program.process.wait(PATIENCE), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
