#pragma once

#include "platform/support/types.h"

#include <cstddef>

/** One resource compiled into an image; bytes and name are valid while the image is loaded. */
struct compiled_resource {
  type_code type;
  int32 id;
  const char* name;
  const void* bytes;
  size_t size;
};

/** The resources of one image, found in the table that the image passes in; nothing is copied. */
class BResources {
public:
  BResources() = default;
  BResources(const compiled_resource* table, size_t count) : fTable(table), fCount(count) {}

  /** Null, and `size` untouched, when there is no such resource. */
  const void* LoadResource(type_code type, int32 id, size_t* size) const;
  const void* LoadResource(type_code type, const char* name, size_t* size) const;

private:
  const compiled_resource* fTable = nullptr;
  size_t fCount = 0;
};
