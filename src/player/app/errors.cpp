#include "player/app/errors.h"
#include "player/texts/player_texts.h"

#include "platform/support/cut_text.h"

#include <algorithm>

namespace {
constexpr size_t kShown = 3; // more would push the playlist off a small window
}

void TErrors::Add(const std::string& error, TLife life) {
  const std::string_view text = cut_text(error);
  const auto known = std::ranges::find(fErrors, text, &TError::text);
  if (known == fErrors.end())
    fErrors.push_back({std::string(text), life});
  else
    known->isOld = false;
}

void TErrors::SongIsHeard() {
  std::erase_if(fErrors, [](const TError& error) { return error.isOld && error.life == TLife::kOfSong; });
  for (TError& error : fErrors) error.isOld = true;
}

bool TErrors::Remove(const std::string& error) {
  return std::erase_if(fErrors, [text = cut_text(error)](const TError& shown) { return shown.text == text; }) > 0;
}

bool TErrors::Clear() {
  const bool had = !fErrors.empty();
  fErrors.clear();
  return had;
}

std::string TErrors::Text() const {
  const size_t hidden = fErrors.size() - std::min(fErrors.size(), kShown);
  std::string text;
  if (hidden > 0)
    text = hidden == 1 ? player_text("Player_Err_Earlier_One", {})
                       : player_text("Player_Err_Earlier", {std::to_string(hidden)});
  for (size_t i = hidden; i < fErrors.size(); ++i) text += (text.empty() ? "" : "\n") + fErrors[i].text;
  return text;
}
