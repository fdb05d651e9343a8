#pragma once

#include "platform/support/types.h"

#include <map>
#include <memory>
#include <mutex>

/** Shared objects by id; ids count up from the first and are not reused. Thread-safe. */
template <typename Object>
class IdTable {
public:
  explicit IdTable(int32 firstId = 1) : fNextId(firstId) {}

  int32 Add(std::shared_ptr<Object> object) {
    return FindOrAdd(std::move(object), [](const Object&) { return false; });
  }
  /** The id of an object that matches; without one the new object is added. */
  template <typename Matches>
  int32 FindOrAdd(std::shared_ptr<Object> object, Matches matches) {
    const std::lock_guard lock(fMutex);
    if (const int32 id = FindLocked(matches); id > 0) return id;
    fObjects.emplace(fNextId, std::move(object));
    return fNextId++;
  }
  /** Null for an unknown id. */
  std::shared_ptr<Object> Get(int32 id) const {
    const std::lock_guard lock(fMutex);
    const auto found = fObjects.find(id);
    return found == fObjects.end() ? nullptr : found->second;
  }
  /** B_NAME_NOT_FOUND when no object matches. */
  template <typename Matches>
  int32 Find(Matches matches) const {
    const std::lock_guard lock(fMutex);
    return FindLocked(matches);
  }
  /** Null for an unknown id. */
  std::shared_ptr<Object> Remove(int32 id) {
    const std::lock_guard lock(fMutex);
    auto removed = fObjects.extract(id);
    return removed.empty() ? nullptr : std::move(removed.mapped());
  }
  template <typename Matches>
  void RemoveIf(Matches matches) {
    const std::lock_guard lock(fMutex);
    std::erase_if(fObjects, [&](const auto& entry) { return matches(*entry.second); });
  }

private:
  template <typename Matches>
  int32 FindLocked(Matches matches) const {
    for (const auto& [id, object] : fObjects)
      if (matches(*object)) return id;
    return B_NAME_NOT_FOUND;
  }

  mutable std::mutex fMutex; // guards fObjects, fNextId
  std::map<int32, std::shared_ptr<Object>> fObjects;
  int32 fNextId;
};
