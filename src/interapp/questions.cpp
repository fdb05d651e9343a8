#include "interapp/questions.h"

#include "interapp/inter_app_prefs.h"
#include "language/llt.h"

namespace {

std::string letter_format() {
  std::string format;
  if (gIAP) gIAP->GetString("AccKeyFormat", &format);
  return format;
}

} // namespace

koreva::TAlertButton text_button(const char* key, char letter, bool isHarmless) {
  return {gLLT->Text(key), letter, isHarmless};
}

koreva::TAlertButton cancel_button(bool isDefault) {
  return {gLLT->Text("Button_Cancel"), 'C', true, isDefault};
}

long ask(const std::string& text, std::initializer_list<koreva::TAlertButton> buttons) {
  return koreva::show_alert(text, gLLT->Text("Alert_Caption"), buttons, letter_format());
}

bool ask_no_yes(const std::string& text) {
  return ask(text, {text_button("Button_No", 'N', true), text_button("Button_Yes", 'Y')}) == 1;
}

void tell(const std::string& text) {
  koreva::show_msg(text, gLLT->Text("Alert_Caption"), text_button("Button_Understand", 'U', true), letter_format());
}

void tell_for(bigtime_t limitUs, const std::string& text) {
  koreva::show_msg_for(limitUs, text, gLLT->Text("Alert_Caption"), text_button("Button_Understand", 'U', true),
                       letter_format());
}

void notify(const std::string& text) {
  koreva::post_msg(text, gLLT->Text("Alert_Caption"), text_button("Button_Understand", 'U', true), letter_format());
}
