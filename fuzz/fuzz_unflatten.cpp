#include "fuzz/fuzz.h"
#include "platform/app/message.h"
#include "platform/support/data_io.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  BMessage message;
  if (message.Unflatten(bytes, size) != B_OK) {
    require(message.IsEmpty());
    return 0;
  }
  // A valid message survives another round trip.
  const std::vector<char> flat = message.Flatten();
  BMemoryIO stream(flat.data(), flat.size());
  BMessage again;
  require(again.Unflatten(&stream) == B_OK && again.Flatten() == flat);
  for (const std::string& name : message.FieldNames()) {
    static_cast<void>(message.GetString(name.c_str()));
    const void* data = nullptr;
    ssize_t length = 0;
    static_cast<void>(message.FindData(name.c_str(), B_ANY_TYPE, &data, &length));
  }
  return 0;
}
