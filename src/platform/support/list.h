#pragma once

#include "platform/support/types.h"

#include <vector>

/** An ordered list of pointers that it does not own. Not safe for several threads. */
class BList {
public:
  bool AddItem(void* item);
  bool AddItem(void* item, int32 index);
  void* RemoveItem(int32 index);
  bool RemoveItem(void* item);
  void MakeEmpty() { fItems.clear(); }

  /** Null outside the list. */
  void* ItemAt(int32 index) const;
  int32 IndexOf(void* item) const;
  int32 CountItems() const { return static_cast<int32>(fItems.size()); }
  bool IsEmpty() const { return fItems.empty(); }

private:
  std::vector<void*> fItems;
};
