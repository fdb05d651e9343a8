#include "common/ini_file.h"
#include "fuzz/fuzz.h"
#include "tests/support/memory_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  constexpr int kLineLength = 32;
  MemoryFile stream(text_of(bytes, size));
  {
    TIniFile file(&stream, kLineLength);
    char text[kLineLength + 1];
    BList sections;
    require(file.EnumSections(&sections) >= 1);
    for (int32 i = 0; i < sections.CountItems(); ++i) {
      file.ChangeSection(static_cast<const char*>(sections.ItemAt(i)));
      BList keys;
      file.EnumKeys(&keys);
      for (int32 k = 0; k < keys.CountItems(); ++k) {
        const char* const key = static_cast<const char*>(keys.ItemAt(k));
        rgb_color color;
        float number = 0;
        require(file.ReadValue(key, text) && file.ReadValue(key, &color) && file.ReadValue(key, &number));
      }
      while (file.ReadComment(text)) {
      }
    }
    file.WriteValue("added", 7L);
    long seven = 0;
    require(file.ReadValue("ADDED", &seven) && seven == 7);
    file.DeleteSection("_TIniF_GlobalSec");
  }
  return 0;
}
