#include "common/ini_file.h"
#include "fuzz/fuzz.h"
#include "language/llt.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const std::string text =
      "[Informations]\nHeader = LLT File Format 100\nLanguage = x\n[Data]\n" + text_of(bytes, size);
  BMemoryIO stream(text.data(), text.size());
  TIniFile file(&stream, 2048);
  TLLT table;
  require(table.Load(&file) == 0);
  const auto texts = table.TextMap();
  for (const auto& [key, value] : *texts) require(table.Text(key.c_str()) == std::string(value.c_str()));
  TLLT copy(table);
  require(copy.LanguageName() == table.LanguageName());
  return 0;
}
