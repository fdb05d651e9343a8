"""What a screen reader and a user without a mouse find in the editor's window."""
import eyes
import hands
from case import Case

MENUS = {
    ("File",): ["New", "", "Open lyrics of current song", "Open...", "", "Save", "Save as...", "Export...", "", "Close"],
    ("File", "Open..."): ["a.lrc", "", "Clear the list of recent files"],
    ("Edit",): ["Undo", "Redo", "", "Shift all time tags...", "Delete all time tags", "",
                "Convert standard tags to extended", "Convert extended tags to standard"],
    ("Mode",): ["Tag input", "Free edit"],
    ("Mode", "Tag input"): ["Tag input, extended tags", "Tag input, standard tags"],
    ("Tools",): ["Preferences...", "KOREVA common preferences..."],
    ("Help",): ["Help", "", "About Vesmo Editor"],
}
BUTTONS = ["Open lyrics of current song", "Open...", "Save", "Shift all time tags...", "Tag input, extended tags",
           "Tag input, standard tags", "Free edit", "Help", "About Vesmo Editor"]


class Tree(Case):
    def setUp(self):
        super().setUp()
        self.stage.start(self.stage.file("a.lrc", "one\ntwo\n"))

    def test_window_menus_and_status_bar_have_roles_and_names(self):
        s = self.stage
        self.assertEqual((eyes.role(s.window()), eyes.name(s.window())), ("frame", "a.lrc - Vesmo Editor"))
        self.assertEqual(s.status(), " [Tag, extended] UTF-8 <LF>   "
                         "Space: stamp the line   + / -: nudge   Delete: remove the tag")
        bar = eyes.find(s.window(), "menu bar")
        self.assertEqual([eyes.name(menu) for menu in eyes.children(bar)], ["File", "Edit", "Mode", "Tools", "Help"])
        for menu, names in MENUS.items():
            items = s.items_of(*menu)
            self.assertEqual([eyes.name(item) for item in items], names)
            self.assertEqual([eyes.role(item) for item in items], ["menu item" if n else "separator" for n in names])
        self.assertNotIn("enabled", eyes.states(s.menu_item("Edit", "Undo")))

    def test_rows_of_the_list_and_the_text_can_be_read(self):
        s = self.stage
        self.assertEqual(eyes.role(s.lyrics()), "list")
        self.assertEqual([eyes.role(row) for row in eyes.children(s.lyrics())], ["list item"] * 2)
        self.assertEqual(s.rows(), ["one", "two"])
        hands.press("Down")
        s.wait_selected(1)
        hands.press("ctrl+e")
        s.wait_status("[Edit]")
        self.assertEqual(eyes.role(s.lyrics()), "text")
        self.assertLessEqual({"editable", "multi-line", "focused"}, eyes.states(s.lyrics()))
        self.assertEqual(s.text(), "one\ntwo\n")

    def test_tab_goes_round_through_the_tool_bar_and_a_button_is_pressed_by_the_space_bar(self):
        s = self.stage
        for name in [*BUTTONS, "Lyrics", *BUTTONS[:6]]:
            hands.press("Tab")
            s.wait_focus(name)
        hands.press("space")
        s.wait_status("[Tag, standard]")
        hands.press("shift+Tab")
        s.wait_focus(BUTTONS[4])
