#include "platform/app/return_addresses.h"

#include <algorithm>
#include <limits>
#include <mutex>
#include <random>
#include <vector>

namespace return_addresses {

namespace {

struct Entry {
  uint64 number;
  BMessenger target;
};

struct Table {
  std::mutex mutex; // guards entries
  std::vector<Entry> entries;
};

/** Never destroyed: letters arrive while the process exits. */
Table& table() {
  static Table* const instance = new Table;
  return *instance;
}

uint64 random_number() {
  std::random_device source;
  std::uniform_int_distribution<uint64> numbers(1, std::numeric_limits<uint64>::max());
  return numbers(source);
}

} // namespace

uint64 number_of(const BMessenger& target) {
  const std::lock_guard lock(table().mutex);
  std::vector<Entry>& entries = table().entries;
  const auto found = std::ranges::find(entries, target, &Entry::target);
  if (found != entries.end()) return found->number;
  std::erase_if(entries, [](const Entry& entry) { return !entry.target.IsValid(); });
  return entries.emplace_back(Entry{random_number(), target}).number;
}

BMessenger find(uint64 number) {
  const std::lock_guard lock(table().mutex);
  const auto found = std::ranges::find(table().entries, number, &Entry::number);
  return found == table().entries.end() ? BMessenger() : found->target;
}

} // namespace return_addresses
