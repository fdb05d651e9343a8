#include "platform/support/list.h"

#include <algorithm>

bool BList::AddItem(void* item) {
  fItems.push_back(item);
  return true;
}

bool BList::AddItem(void* item, int32 index) {
  if (index < 0 || index > CountItems()) return false;
  fItems.insert(fItems.begin() + index, item);
  return true;
}

void* BList::RemoveItem(int32 index) {
  void* const item = ItemAt(index);
  if (index >= 0 && index < CountItems()) fItems.erase(fItems.begin() + index);
  return item;
}

bool BList::RemoveItem(void* item) {
  const int32 index = IndexOf(item);
  if (index < 0) return false;
  fItems.erase(fItems.begin() + index);
  return true;
}

void* BList::ItemAt(int32 index) const {
  return index >= 0 && index < CountItems() ? fItems[static_cast<size_t>(index)] : nullptr;
}

int32 BList::IndexOf(void* item) const {
  const auto found = std::find(fItems.begin(), fItems.end(), item);
  return found == fItems.end() ? -1 : static_cast<int32>(found - fItems.begin());
}
