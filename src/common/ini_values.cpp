/** Typed values of an INI file. */

#include "common/ini_file.h"

#include <cstdio>
#include <cstring>
#include <locale>
#include <sstream>

namespace {

/** Parses the text in the classic locale; an invalid text gives zero. */
template <typename T>
void extract(const std::string& text, T* value) {
  *value = {}; // the stream leaves it unchanged if the text is empty
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  stream >> *value;
}

} // namespace

bool TIniFile::ReadValue(const char* key, char* value) {
  const TIniFilePair* const pair = FindPair(key);
  if (pair) std::memcpy(value, pair->value.c_str(), pair->value.size() + 1);
  return pair != nullptr;
}

bool TIniFile::ReadValue(const char* key, bool* value) {
  const TIniFilePair* const pair = FindPair(key);
  if (pair) *value = pair->value == "1";
  return pair != nullptr;
}

bool TIniFile::ReadValue(const char* key, long* value) {
  const TIniFilePair* const pair = FindPair(key);
  if (pair) extract(pair->value, value);
  return pair != nullptr;
}

bool TIniFile::ReadValue(const char* key, long long* value) {
  const TIniFilePair* const pair = FindPair(key);
  if (pair) extract(pair->value, value);
  return pair != nullptr;
}

bool TIniFile::ReadValue(const char* key, float* value) {
  const TIniFilePair* const pair = FindPair(key);
  if (pair) extract(pair->value, value);
  return pair != nullptr;
}

bool TIniFile::ReadValue(const char* key, rgb_color* value) {
  const TIniFilePair* const pair = FindPair(key);
  if (pair == nullptr) return false;
  std::istringstream stream(pair->value);
  stream.imbue(std::locale::classic());
  for (uint8* component : {&value->red, &value->green, &value->blue, &value->alpha}) {
    int number = 0;
    if (!(stream >> number)) break;
    *component = static_cast<uint8>(number);
  }
  return true;
}

void TIniFile::WriteValue(const char* key, const char* value) {
  if (fCurrent == nullptr) return;
  if (TIniFilePair* const pair = FindPair(key)) {
    pair->value = Cut(value);
  } else {
    fCurrent->pairs.push_back({Cut(key), Cut(value)});
  }
  fDirty = true;
}

void TIniFile::WriteValue(const char* key, bool value) {
  WriteValue(key, value ? "1" : "0");
}
void TIniFile::WriteValue(const char* key, long value) {
  WriteValue(key, std::to_string(value).c_str());
}
void TIniFile::WriteValue(const char* key, long long value) {
  WriteValue(key, std::to_string(value).c_str());
}

void TIniFile::WriteValue(const char* key, float value) {
  std::ostringstream text; // general format with 6 digits, independent of the locale
  text.imbue(std::locale::classic());
  text << value;
  WriteValue(key, text.str().c_str());
}

void TIniFile::WriteValue(const char* key, rgb_color value) {
  char text[20];
  std::snprintf(text, sizeof text, "%d %d %d %d", value.red, value.green, value.blue, value.alpha);
  WriteValue(key, text);
}
