#include "lyrics/bulk_preview.h"

TBulkPreview bulk_preview(const std::vector<std::string>& before, const std::list<std::string>& after,
                          size_t mostShown) {
  TBulkPreview preview;
  auto old = before.begin();
  size_t number = 0;
  for (const std::string& line : after) {
    if (old == before.end()) break;
    const std::string& previous = *old++;
    ++number;
    if (previous == line) continue;
    ++preview.changed;
    if (line.empty()) ++preview.emptied;
    if (preview.first.size() < mostShown) preview.first.push_back({number, previous, line});
  }
  return preview;
}
