"""What a screen reader and a user without a mouse find in the editor's window."""
import eyes
import hands
from case import Case

BUTTONS = ["Open lyrics of current song", "Open…", "Save", "Shift all time tags…", "Tag input, extended tags",
           "Tag input, standard tags", "Free edit", "Word by word", "Help", "About Vesmo Editor"]


class Tree(Case):
    def test_window_menus_lyrics_and_status_bar_have_roles_and_names(self):
        s = self.start("one\ntwo\n")
        self.assertEqual((eyes.role(s.window()), eyes.name(s.window())), ("frame", "a.lrc - Vesmo Editor"))
        self.assertIn("[Tag, extended] UTF-8 <LF>", s.status())
        bar = eyes.find(s.window(), "menu bar")
        self.assertEqual([eyes.name(menu) for menu in eyes.children(bar)], ["File", "Edit", "Mode", "Tools", "Help"])
        for menu in ("File",), ("File", "Open…"), ("Edit",), ("Mode",), ("Mode", "Tag input"), ("Tools",), ("Help",):
            kinds = {(eyes.role(item), bool(eyes.name(item))) for item in s.items_of(*menu)}
            self.assertEqual(kinds | {("separator", False)}, {("menu item", True), ("separator", False)}, menu)
        self.assertNotIn("enabled", eyes.states(s.menu_item("Edit", "Undo")))
        self.assertEqual(eyes.role(s.lyrics()), "list")
        self.assertEqual([eyes.role(row) for row in eyes.children(s.lyrics())], ["list item"] * 2)
        hands.press("ctrl+e")
        s.wait_status("[Edit]")
        self.assertEqual(eyes.role(s.lyrics()), "text")
        self.assertLessEqual({"editable", "multi-line", "focused"}, eyes.states(s.lyrics()))

    def test_tab_goes_round_through_the_tool_bar_and_a_button_is_pressed_by_the_space_bar(self):
        s = self.start()
        for name in [*BUTTONS, "Lyrics", *BUTTONS[:6]]:
            hands.press("Tab")
            s.wait_focus(name)
        hands.press("space")
        s.wait_status("[Tag, standard]")
        hands.press("shift+Tab")
        s.wait_focus(BUTTONS[4])
