#pragma once

#include "platform/support/geometry.h"

#include <functional>
#include <string>
#include <vector>

class BWindow;

/** Simulates the user, for tests: real events through Qt's window system. Called from the thread that owns the window
   or delivers its messages by hand, not from the display thread. */
namespace hands {

/** Waits until the display has processed its tasks and all resulting events. */
void wait_for_display();
/** Waits for the condition while the display runs; false after 20 s. */
bool until(const std::function<bool()>& isSo);
/** The same, while the messages of a window that does not run are delivered. */
bool until(BWindow& window, const std::function<bool()>& isSo);
/** All windows with that title, shown or not. */
std::vector<BWindow*> windows_titled(const std::string& title);
/** Waits until the window with that title is on the screen. */
BWindow& wait_for_window(const std::string& title);
/** Delivers the messages of a window that does not run until it and the display are idle. */
void settle(BWindow& window);

/** A key in Qt's notation: "Down", "Space", "Ctrl+Shift+0", "a". Goes to the control with the focus. */
void press(BWindow& window, const std::string& key);
/** Presses the key that many ms ago and releases it when it was held for so long. */
void hold(BWindow& window, const std::string& key, int agoMs, int heldMs);
/** Auto-repeat of a key that is held down. */
void repeat(BWindow& window, const std::string& key);
/** `where` is in the coordinates of the view. */
void click(BWindow& window, const std::string& view, BPoint where, int times = 1);
/** With the left button; `modifier` is "Ctrl", "Shift" or empty. */
void drag(BWindow& window, const std::string& view, BPoint from, BPoint to, const std::string& modifier = {});
/** Clicks the tab of that index in a tab view. */
void select_tab(BWindow& window, const std::string& view, int index);
void press_close_button(BWindow& window);
void resize_by_hand(BWindow& window, int width, int height);
void move_by_hand(BWindow& window, int x, int y);
void drop_files(BWindow& window, BPoint where, const std::vector<std::string>& paths);
void paste(BWindow& window, const std::string& text);
void compose(BWindow& window, const std::string& preedit, const std::string& commit);
/** An input method replaces text, counted from the caret. */
void compose_over(BWindow& window, const std::string& commit, int from, int length);

/** A key for the open menu; no effect without one. */
void press_in_menu(const std::string& key);
/** Opens the menus on the path and clicks its last item. False when there is none or it is disabled. */
bool choose(BWindow& window, const std::vector<std::string>& labels);
struct MenuLine {
  std::string label;
  bool isMarked = false;
  bool isEnabled = true;
  std::string shortcut;
};
/** The items of the menu at that path; separators have an empty label. */
std::vector<MenuLine> menu_lines(BWindow& window, const std::vector<std::string>& labels);

/** Waits for a question on the screen; empty when none comes. */
struct Question {
  std::string caption;
  std::string text;
  std::vector<std::string> buttons;
};
Question wait_for_question();
/** Empty when none is shown. */
Question question_now();
/** A key typed into the question; false when there is none. */
bool answer_with_key(const std::string& key);
bool answer_with_button(const std::string& label);

/** The text of a list row for screen readers; empty when it was never drawn. */
std::string row_text(BWindow& window, const std::string& list, int row);
std::string row_description(BWindow& window, const std::string& list, int row);
/** What screen readers get for a control; the role as named by Qt. */
struct Spoken {
  std::string name;
  std::string role;
  bool isOn = false;
  bool isEnabled = false;
};
Spoken spoken(BWindow& window, const std::string& view);
/** The tip on the screen; empty when there is none. */
std::string tip_shown();
/** Hovers over a control until its tool tip is due. */
void rest_mouse_on(BWindow& window, const std::string& view);
/** The focused view if its window is active, else empty. */
std::string focused_view(BWindow& window);
/** All pixels of a control as currently drawn. */
std::string pixels(BWindow& window, const std::string& view);
/** Empty when there is no such label. */
std::string label_text(BWindow& window, const std::string& view);
BRect control_frame(BWindow& window, const std::string& view);
bool is_on_top(BWindow& window);
bool is_active(BWindow& window);

/** Types a name into a file panel, then Return. */
void type_file_name(BWindow& panel, const std::string& name);
/** A menu or completion popup is open, which takes all keys. */
bool popup_is_open();
/** Types a colour ("#102030") into the colour dialog and accepts or cancels it; false when none is open. */
bool choose_color(const std::string& color, bool accepts = true);
std::string file_name_selected(BWindow& panel);
/** Its title, its buttons and the folders that it offers. */
std::vector<std::string> panel_texts(BWindow& panel);
bool is_shown(BWindow& window);

} // namespace hands
