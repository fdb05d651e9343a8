#include "platform/storage/resources.h"

#include <algorithm>
#include <cstring>

namespace {

template <typename Matches>
const void* find_resource(const compiled_resource* table, size_t count, size_t* size, Matches matches) {
  const auto* const end = table + count;
  const auto* const found = std::find_if(table, end, matches);
  if (found == end) return nullptr;
  *size = found->size;
  return found->bytes;
}

} // namespace

const void* BResources::LoadResource(type_code type, int32 id, size_t* size) const {
  return find_resource(fTable, fCount, size, [&](const compiled_resource& r) { return r.type == type && r.id == id; });
}

const void* BResources::LoadResource(type_code type, const char* name, size_t* size) const {
  return find_resource(fTable, fCount, size, [&](const compiled_resource& r) {
    return r.type == type && r.name && std::strcmp(r.name, name) == 0;
  });
}
