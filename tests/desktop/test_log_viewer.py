"""The log viewer through its accessible interfaces."""

from desk import DesktopTest, clipboard, key, tr, until, unittest

LEVELS = ["INFO", "ERROR", "WARN", "DEBUG", "FATAL"]
LINES = [
    *(
        f"2030-01-01 00:00:0{second},000 {level} [7] [camera] {level.lower()} message {second}"
        for second, level in enumerate(LEVELS)
    ),
    "2030-01-01 00:00:05,000 INFO [7] [camera] the last one",
]
TITLE = "newest.log - Vantrel"
COLUMNS = ["Log Timestamp", "Log Level", "Log Source", "Log Message"]


class LogViewer(DesktopTest):
    def prepare(self):
        log = self.program.sdk / "QZviewer" / "newest.log"
        log.write_text("\n".join(LINES) + "\n")

    def setUp(self):
        super().setUp()
        until("the newest log", lambda: self.files.cell(0, 2).name == "newest.log")
        self.files.cell(0, 2).press()
        self.viewer = self.program.window(TITLE)
        self.lines = self.viewer.find("table", tr("Log lines"))
        self.until_messages(range(len(LINES)))

    def until_messages(self, wanted):
        messages = [LINES[i].rsplit("]")[-1] for i in wanted]
        until(f"the messages {messages}", lambda: self.lines.column(3) == messages)

    def until_shown(self, wanted):
        def shown():
            return [row for row in range(len(LINES)) if self.lines.cell(row, 3).showing]

        until(f"the rows {wanted}", lambda: shown() == list(wanted))

    def context_menu(self):
        self.lines.focus()
        return self.program.menu(lambda: key("Menu"))

    def test_every_control_has_its_name(self):
        roles = {"push button", "check box", "text", "table"}
        named = {(n.role, n.name) for n in self.viewer.all_below() if n.role in roles}
        self.assertEqual(
            named,
            {
                ("push button", tr("Close")),
                *(("check box", level) for level in LEVELS[:4]),
                ("text", tr("Search")),
                ("push button", tr("Start the search")),
                ("push button", tr("Choose columns")),
                ("table", tr("Log lines")),
            },
        )
        headers = [self.lines.header(column).name for column in range(4)]
        self.assertEqual(headers, [tr(name) for name in COLUMNS])

    def test_tab_reaches_everything(self):
        close = self.viewer.find("push button", tr("Close"))
        close.focus()
        controls = [tr("Search"), tr("Start the search"), tr("Choose columns"), tr("Log lines")]
        self.assert_tab_order(self.viewer, [tr("Close"), *LEVELS[:4], *controls])
        key("space")
        self.program.closed(TITLE)

    def test_each_level_can_be_hidden(self):
        everything = list(range(len(LINES)))
        self.until_shown(everything)
        for level in LEVELS[:4]:
            box = self.viewer.find("check box", level)
            box.toggle()
            self.until_shown([row for row in everything if f" {level} [" not in LINES[row]])
            box.toggle()
            self.until_shown(everything)

    def test_each_column_can_be_hidden(self):
        choose = self.viewer.find("push button", tr("Choose columns"))
        entries = self.program.menu(choose.press)
        self.assertEqual(list(entries), [tr(name) for name in COLUMNS])
        for column, name in enumerate(COLUMNS):
            entry = entries[tr(name)]
            self.assertTrue(entry.checked)
            entry.press()
            until(f"{name} to go", lambda c=column: not self.lines.cell(0, c).showing)
            entry.press()
            until(f"{name} again", lambda c=column: self.lines.cell(0, c).showing)
        key("Escape")
        until("the menu to close", lambda: not entries[tr(COLUMNS[0])].showing)

    def test_searches_and_shows_everything_again(self):
        field = self.viewer.find("text", tr("Search"))
        field.type("WARN.*2$")
        self.viewer.find("push button", tr("Start the search")).press()
        self.until_messages([2])

        field.type("message.[01]$")
        key("Return")
        self.until_messages([0, 1])

        field.type("")
        key("Return")
        self.until_messages(range(len(LINES)))

    def test_shows_a_match_in_context(self):
        field = self.viewer.find("text", tr("Search"))
        field.type("[24]$")
        key("Return")
        self.until_messages([2, 4])
        self.lines.focus()
        key("End")
        until("the last line found", lambda: self.lines.cell(1, 0).focused)
        field.type("")
        key("Return")
        self.until_messages(range(len(LINES)))
        self.lines.focus()
        until("the same line", lambda: self.lines.cell(4, 0).focused)

    def test_shows_that_nothing_was_found(self):
        self.viewer.find("text", tr("Search")).type("nothing like it")
        key("Return")
        hint = tr("No line matches. Empty the field and press Enter to see the whole log.")
        until("the hint", lambda: self.lines.accessible.get_description() == hint)

    def test_closes_by_its_keys(self):
        for keys in "Escape", "ctrl+w":
            key(keys)
            self.program.closed(TITLE)
            self.files.cell(0, 1).press()
            self.program.window(TITLE)

    def test_keys_move_to_the_search_and_through_the_lines(self):
        self.lines.focus()
        key("ctrl+f")
        until("the focus", lambda: self.viewer.find("text", tr("Search")).focused)
        self.lines.focus()
        key("End")
        until("the last line", lambda: self.lines.cell(len(LINES) - 1, 0).focused)
        key("Home")
        until("the first line", lambda: self.lines.cell(0, 0).focused)

    def test_copies_all_lines_and_the_chosen_ones(self):
        entries = self.context_menu()
        self.assertEqual(list(entries), [tr("CopyAll"), tr("CopySelected")])
        entries[tr("CopyAll")].press()
        until("all lines", lambda: clipboard() == "\n".join(LINES))
        key("Escape")
        until("the menu to close", lambda: not entries[tr("CopyAll")].showing)

        key("Home", "Down")
        until("the second line", lambda: self.lines.cell(1, 0).focused)
        key("shift+Down")
        until("the third line", lambda: self.lines.cell(2, 0).focused)
        self.context_menu()[tr("CopySelected")].press()
        until("two lines", lambda: clipboard() == "\n".join(LINES[1:3]))
        key("Escape")

    def test_a_key_copies_the_chosen_line(self):
        self.lines.focus()
        key("Home")
        until("the first line", lambda: self.lines.cell(0, 0).focused)
        key("End")
        until("the last line", lambda: self.lines.cell(len(LINES) - 1, 0).focused)
        key("ctrl+c")
        until("the last line", lambda: clipboard() == LINES[-1])

    def test_closing_leaves_the_main_window(self):
        self.viewer.find("push button", tr("Close")).press()
        self.program.closed(TITLE)
        self.program.window("Vantrel")
        self.files.cell(0, 1).press()
        self.program.window(TITLE)


if __name__ == "__main__":
    unittest.main(verbosity=2)
