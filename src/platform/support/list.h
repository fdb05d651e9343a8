#pragma once

#include "platform/support/types.h"

#include <vector>

/** An ordered list of pointers that it does not own. Not thread-safe. */
class BList {
public:
  void AddItem(void* item) { fItems.push_back(item); }
  /** Null for an index outside the list. */
  void* ItemAt(int32 index) const {
    return index >= 0 && index < CountItems() ? fItems[static_cast<size_t>(index)] : nullptr;
  }
  int32 CountItems() const { return static_cast<int32>(fItems.size()); }

private:
  std::vector<void*> fItems;
};
