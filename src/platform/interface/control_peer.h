#pragma once

#include "platform/interface/view_peer.h"

#include <string>
#include <utility>
#include <vector>

namespace display {

/** The range of a slider's values. */
inline constexpr int32 kSliderSteps = 10000;

/** Thread-safe handle to a simple control. A setter without meaning for the kind of control has no effect. */
class ControlPeer : public ViewPeer {
public:
  using ViewPeer::ViewPeer;

  /** Text of a button or check box; title of a colour button's dialog. */
  void SetLabel(const std::string& label);
  /** Button: 1 marks it as the default. Check box: 1 is checked. Colour button: as in BColorControl. Menu field: index
      of the choice, -1 for none. Slider: 0 to kSliderSteps. Tool button: 1 is pressed in; the first call makes it a
      toggle for screen readers. */
  void SetValue(int32 value);
  /** A click does not move the focus to the control. */
  void SetFocusByTabOnly();
  /** Menu field. */
  void SetChoices(const std::vector<std::string>& choices);
  /** Text field. */
  void SetText(const std::string& text);
  void SelectAll();
  /** After that start of the text. */
  void PlaceCaretAfter(const std::string& start);
  /** The text up to the caret and from it on. Blocks on the display thread. */
  std::pair<std::string, std::string> TextAroundCaret() const;
};

std::shared_ptr<ControlPeer> make_button_peer(const BMessenger& view);
std::shared_ptr<ControlPeer> make_check_box_peer(const BMessenger& view);
std::shared_ptr<ControlPeer> make_color_peer(const BMessenger& view);
std::shared_ptr<ControlPeer> make_menu_field_peer(const BMessenger& view);
std::shared_ptr<ControlPeer> make_slider_peer(const BMessenger& view);
std::shared_ptr<ControlPeer> make_text_field_peer(const BMessenger& view);
std::shared_ptr<ControlPeer> make_key_field_peer(const BMessenger& view);

} // namespace display
