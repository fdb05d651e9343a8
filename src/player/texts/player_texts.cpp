#include "player/texts/player_texts.h"

#include "language/builtin_texts.h"
#include "language/llt.h"

#include "platform/storage/resources.h"

namespace {

TLLT built_in() {
  TLLT texts;
  texts.Load(nullptr, kBuiltinTextsId);
  return texts;
}

TLLT& player_texts() {
  static TLLT texts = built_in();
  return texts;
}

} // namespace

const char* player_text(const char* key) {
  return player_texts().Text(key);
}

std::string player_text(const char* key, std::initializer_list<std::string> parts) {
  const std::string text = player_text(key);
  std::string whole;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool isPlace = text[i] == '%' && i + 1 < text.size() && text[i + 1] >= '1' && text[i + 1] <= '9';
    const auto number = isPlace ? static_cast<size_t>(text[i + 1] - '1') : parts.size();
    if (number < parts.size()) {
      whole += parts.begin()[number];
      ++i;
    } else {
      whole += text[i];
    }
  }
  return whole;
}

bool load_player_texts(const std::string& path) {
  TLLT texts = built_in();
  if (!path.empty()) texts.Load(path.c_str());
  if (*texts.TextMap() == *player_texts().TextMap()) return false;
  player_texts() = texts;
  return true;
}
