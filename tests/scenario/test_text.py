"""Free edit mode and the commands over every line."""
import hands
from case import Case

TAGGED = "[00:10]one\n[00:20:50]two\n[Chorus]\nplain\n"


class FreeEdit(Case):
    def test_what_is_typed_cut_and_pasted_is_saved(self):
        s = self.start("one\ntwo\n")
        hands.press("ctrl+e")
        s.wait_status("[Edit]")
        hands.write("zero")
        hands.press("Return")
        s.wait_text("zero\none\ntwo\n")
        hands.press("shift+Down", "ctrl+x", "ctrl+End", "ctrl+v")
        s.wait_text("zero\ntwo\none\n")
        s.save(b"zero\ntwo\none\n\0")
        hands.press("ctrl+z")
        s.wait_text("zero\ntwo\n")
        hands.press("ctrl+z")
        s.wait_text("zero\none\ntwo\n")
        hands.press("ctrl+shift+z", "ctrl+shift+z")
        s.wait_text("zero\ntwo\none\n")
        hands.press("ctrl+w")
        s.wait_closed()


class EveryLine(Case):
    def test_tags_are_converted_both_ways_and_deleted_when_the_answer_is_yes(self):
        s = self.start(TAGGED)
        before = s.rows()
        for item in ("Convert standard tags to extended", "Delete all time tags"):
            s.choose("Edit", item)
            s.answer("?", "No")
            self.assertEqual(s.rows(), before)
        s.choose("Edit", "Convert standard tags to extended")
        s.answer('"standard time tags" to "extended time tags"', "Yes")
        s.wait_status("Converted all standard time tags to extended time tags")
        s.wait_rows("[00:10:00]one", "[00:20:50]two", "[00:00:00]", "plain")
        s.choose("Edit", "Convert extended tags to standard")
        s.answer('"extended time tags" to "standard time tags"', "Yes")
        s.wait_rows("[00:10]one", "[00:21]two", "[00:00]", "plain")
        s.save(b"[00:10]one\n[00:21]two\n[00:00]\nplain\n\0")
        s.choose("Edit", "Delete all time tags")
        s.answer("Delete all time tags?", "Yes")
        s.wait_status("All time tags deleted")
        s.wait_rows("one", "two", "", "plain")
        hands.press("ctrl+z")
        s.wait_rows("[00:10]one", "[00:21]two", "[00:00]", "plain")
        hands.press("ctrl+w")
        s.wait_closed()
