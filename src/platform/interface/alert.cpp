#include "platform/interface/alert.h"

#include "platform/interface/alert_peer.h"
#include "platform/interface/window.h"
#include "platform/interface/window_peer.h"
#include "platform/kernel/threads.h"

BAlert::BAlert(const char* caption, const char* text, const char* button0, const char* button1, const char* button2,
               alert_type type)
    : fCaption(caption), fText(text), fType(type) {
  for (const char* label : {button0, button1, button2})
    if (label) fButtons.emplace_back(label);
  fLetters.resize(fButtons.size());
  fDefaultButton = static_cast<int32>(fButtons.size()) - 1;
  if (fButtons.size() == 1) fEscapeButton = 0;
}

void BAlert::SetShortcut(int32 button, char letter) {
  if (button >= 0 && button < static_cast<int32>(fButtons.size())) fLetters[static_cast<size_t>(button)] = letter;
}

display::AlertText BAlert::Content() const {
  return {fCaption, fText, fButtons, fLetters, fEscapeButton, fDefaultButton, fType, fIgnoresSpace};
}

void BAlert::Post() {
  display::post_alert(Content());
  delete this;
}

int32 BAlert::GoFor(bigtime_t limitUs) {
  const auto* asker = dynamic_cast<BWindow*>(BLooper::LooperForThread(find_thread(nullptr)));
  const auto inFrontOf = asker && !asker->IsHidden() ? asker->Peer()->Finder() : std::function<QWidget*()>();
  const int32 answer = display::ask(Content(), inFrontOf, limitUs);
  delete this;
  return answer;
}
