#pragma once

#include "platform/support/geometry.h"

#include <functional>
#include <string>
#include <vector>

class BWindow;

/** What a user does to windows, for tests: real events through the window system of the display. Called beside the
    display, from the thread that owns the window or delivers its messages by hand. */
namespace hands {

/** Lets the display work off all it was told and all events that follow. */
void wait_for_display();
/** True once `isSo` holds; lets the display work meanwhile, and gives up after 20 s. */
bool until(const std::function<bool()>& isSo);
/** The living windows of that title, shown or not. */
std::vector<BWindow*> windows_titled(const std::string& title);
/** The window of that title, once it is on the screen. */
BWindow& wait_for_window(const std::string& title);
/** Delivers the messages of a window that does not run, until neither it nor the display has anything left to do. */
void settle(BWindow& window);

/** A key in Qt's notation: "Down", "Space", "Ctrl+Shift+0", "a". Goes to the control with the focus. */
void press(BWindow& window, const std::string& key);
/** A key held down: a second press that says so. */
void repeat(BWindow& window, const std::string& key);
/** In the coordinates of the control of the view of that name. */
void click(BWindow& window, const std::string& view, BPoint where, int times = 1);
/** Clicks the tab of that index in a tab view. */
void select_tab(BWindow& window, const std::string& view, int index);
void press_close_button(BWindow& window);
void resize_by_hand(BWindow& window, int width, int height);
void move_by_hand(BWindow& window, int x, int y);
void drop_files(BWindow& window, BPoint where, const std::vector<std::string>& paths);
void paste(BWindow& window, const std::string& text);
void compose(BWindow& window, const std::string& preedit, const std::string& commit);

/** A key for the menu that is open; without effect when none is. */
void press_in_menu(const std::string& key);
/** Unfolds the menus on the way and clicks the last label. False when there is no such item or it is disabled. */
bool choose(BWindow& window, const std::vector<std::string>& labels);
struct MenuLine {
  std::string label;
  bool isMarked = false;
  bool isEnabled = true;
  std::string shortcut;
};
/** The lines of the menu that the labels lead to, separators with an empty label. */
std::vector<MenuLine> menu_lines(BWindow& window, const std::vector<std::string>& labels);

/** The question on the screen, waited for; empty when none comes. */
struct Question {
  std::string caption;
  std::string text;
  std::vector<std::string> buttons;
};
Question wait_for_question();
/** A key typed into the question; false when there is none. */
bool answer_with_key(const std::string& key);
bool answer_with_button(const std::string& label);

/** How much the list of that name says of a row to those who listen to the screen; empty when never drawn. */
std::string row_text(BWindow& window, const std::string& list, int row);
/** What those who listen to the screen are told of a control; the role as Qt names it. */
struct Spoken {
  std::string name;
  std::string role;
  bool isOn = false;
  bool isEnabled = false;
};
Spoken spoken(BWindow& window, const std::string& view);
/** The tip on the screen; empty when there is none. */
std::string tip_shown();
/** The mouse rests on a control long enough. */
void rest_mouse_on(BWindow& window, const std::string& view);
/** The view whose control has the focus while its window is the active one; empty for none. */
std::string focused_view(BWindow& window);
/** Every pixel of a control, as it is drawn now. */
std::string pixels(BWindow& window, const std::string& view);
/** Empty when there is no such label. */
std::string label_text(BWindow& window, const std::string& view);
BRect control_frame(BWindow& window, const std::string& view);
bool is_on_top(BWindow& window);
bool is_active(BWindow& window);

/** Chooses in a file panel as a user does: the name typed into the field, then Return. */
void type_file_name(BWindow& panel, const std::string& name);
/** A menu or a list of suggestions is unfolded somewhere, and takes every key. */
bool popup_is_open();
/** Types a colour, as in "#102030", into the dialog of colours, and accepts it or, without, cancels; false when none is
    open. */
bool choose_color(const std::string& color, bool accepts = true);
std::string file_name_selected(BWindow& panel);
bool is_shown(BWindow& window);

} // namespace hands
