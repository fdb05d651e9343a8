#include "player/model/info_record.h"

#include "platform/support/cut_text.h"

#include <cstring>

std::string cut_title(std::string_view title) {
  constexpr size_t kRoom = sizeof(TInfoRecord::title) - 1;
  return std::string(cut_text(title.substr(0, title.find('\0')), kRoom));
}

void set_title(TInfoRecord* record, std::string_view title) {
  const std::string cut = cut_title(title);
  std::memset(record->title, 0, sizeof record->title);
  std::memcpy(record->title, cut.data(), cut.size());
}
