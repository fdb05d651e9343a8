#include "player/app/faults.h"

#include "platform/support/cut_text.h"

#include <algorithm>

namespace {
constexpr size_t kShown = 3; // more would push the list of songs off a small window
}

void TFaults::Add(const std::string& fault) {
  const std::string_view text = cut_text(fault);
  if (std::find(fFaults.begin(), fFaults.end(), text) == fFaults.end()) fFaults.emplace_back(text);
}

bool TFaults::Clear() {
  const bool had = !fFaults.empty();
  fFaults.clear();
  return had;
}

std::string TFaults::Text() const {
  const size_t hidden = fFaults.size() - std::min(fFaults.size(), kShown);
  std::string text;
  if (hidden > 0) text = std::to_string(hidden) + (hidden == 1 ? " earlier message:" : " earlier messages:");
  for (size_t i = hidden; i < fFaults.size(); ++i) text += (text.empty() ? "" : "\n") + fFaults[i];
  return text;
}
