#include "player/info_record.h"

#include <cstring>

std::string cut_title(std::string_view title) {
  constexpr size_t kRoom = sizeof(TInfoRecord::title) - 1;
  title = title.substr(0, title.find('\0'));
  if (title.size() <= kRoom) return std::string(title);
  size_t end = kRoom;
  while (end > 0 && (static_cast<unsigned char>(title[end]) & 0xC0) == 0x80) --end;
  return std::string(title.substr(0, end));
}

void set_title(TInfoRecord* record, std::string_view title) {
  const std::string cut = cut_title(title);
  std::memset(record->title, 0, sizeof record->title);
  std::memcpy(record->title, cut.data(), cut.size());
}
