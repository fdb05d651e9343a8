#include "fuzz/fuzz.h"
#include "lyrics/bulk_tags.h"
#include "lyrics/time_tags.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const std::string line = text_of(bytes, size);
  long time = -1;
  bool extended = false;
  if (time_tag_to_time(line, &time, &extended)) {
    std::string tag;
    time_to_time_tag(time, &tag, extended);
    long again = -1;
    bool form = !extended;
    // A printed tag reads back as the clamped time.
    require(time_tag_to_time(tag + "x", &again, &form) && form == extended);
    const long unit = extended ? 10 : 1000;
    require(again == std::clamp(time, 0L, kLastTagTime) / unit * unit);
  } else {
    require(time == -1);
  }
  std::string stripped = line;
  remove_time_tag(&stripped);
  require(line.ends_with(stripped));
  std::list<std::string> lines{line};
  convert_time_tags(&lines, true);
  shift_time_tags(&lines, static_cast<long>(size) * 977 - 5000);
  strip_prefix(line);
  return 0;
}
