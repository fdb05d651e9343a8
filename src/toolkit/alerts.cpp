#include "toolkit/alerts.h"

#include "common/koreva.h"
#include "platform/interface/alert.h"

#include <array>

namespace koreva {

namespace {

alert_type kind_of(TAlertType type) {
  switch (type) {
  case kQuestionAlert:
    return B_IDEA_ALERT;
  case kWarningAlert:
    return B_WARNING_ALERT;
  case kStopAlert:
    return B_STOP_ALERT;
  default:
    return B_INFO_ALERT;
  }
}

BAlert* make_alert(const std::string& text, const std::string& caption, std::initializer_list<TAlertButton> buttons,
                   const std::string& format, TAlertType type) {
  constexpr size_t kMaxButtons = 3;
  std::array<std::string, kMaxButtons> labels;
  std::array<const char*, kMaxButtons> texts{};
  size_t count = 0;
  for (const TAlertButton& button : buttons) {
    if (count == kMaxButtons) break;
    labels[count] = merge_accelerator_key(format, std::string(1, button.letter), button.label);
    texts[count] = labels[count].c_str();
    ++count;
  }
  auto* const alert = new BAlert(caption.c_str(), text.c_str(), texts[0], texts[1], texts[2], kind_of(type));
  int32 index = 0;
  for (const TAlertButton& button : buttons) {
    if (!format.empty()) alert->SetShortcut(index, button.letter);
    if (button.isHarmless) alert->SetEscapeButton(index);
    if (button.isDefault) alert->SetDefaultButton(index);
    if (button.ignoresSpace) alert->IgnoreSpace();
    ++index;
  }
  return alert;
}

} // namespace

long show_alert(const std::string& text, const std::string& caption, std::initializer_list<TAlertButton> buttons,
                const std::string& format, TAlertType type) {
  return make_alert(text, caption, buttons, format, type)->Go();
}

void show_msg(const std::string& text, const std::string& caption, const TAlertButton& button,
              const std::string& format, TAlertType type) {
  show_alert(text, caption, {button}, format, type);
}

void show_msg_for(bigtime_t limitUs, const std::string& text, const std::string& caption, const TAlertButton& button,
                  const std::string& format, TAlertType type) {
  make_alert(text, caption, {button}, format, type)->GoFor(limitUs);
}

void post_msg(const std::string& text, const std::string& caption, const TAlertButton& button,
              const std::string& format, TAlertType type) {
  make_alert(text, caption, {button}, format, type)->Post();
}

} // namespace koreva
