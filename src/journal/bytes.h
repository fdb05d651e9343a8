#pragma once

#include "platform/support/types.h"

#include <string>
#include <string_view>
#include <type_traits>

/** Numbers and texts as bytes, little-endian. Not thread-safe. */
class TByteWriter {
public:
  template <typename Number>
  void Add(Number number) {
    const auto bits = static_cast<uint64>(number);
    for (size_t i = 0; i < sizeof number; ++i) fBytes.push_back(static_cast<char>(bits >> (8 * i)));
  }
  void AddBool(bool value) { fBytes.push_back(value ? 1 : 0); }
  /** Its length, then its bytes. */
  void AddText(std::string_view text) {
    Add(static_cast<uint32>(text.size()));
    fBytes.append(text);
  }
  void Reserve(size_t size) { fBytes.reserve(size); }
  std::string Take() { return std::move(fBytes); }

private:
  std::string fBytes;
};

/** Reads them from untrusted bytes. Once something is missing everything that follows is 0 or empty, and `IsValid` is
    false. */
class TByteReader {
public:
  explicit TByteReader(std::string_view bytes) : fBytes(bytes) {}

  template <typename Number>
  Number Get() {
    const std::string_view bytes = GetBytes(sizeof(Number));
    uint64 bits = 0;
    for (size_t i = 0; i < bytes.size(); ++i) bits |= uint64{static_cast<unsigned char>(bytes[i])} << (8 * i);
    return static_cast<Number>(bits);
  }
  bool GetBool() { return Get<uint8>() != 0; }
  std::string_view GetText() { return GetBytes(Get<uint32>()); }
  std::string_view GetBytes(size_t size) {
    if (size > fBytes.size()) {
      fIsValid = false;
      fBytes = {};
      return {};
    }
    const std::string_view bytes = fBytes.substr(0, size);
    fBytes.remove_prefix(size);
    return bytes;
  }
  bool IsValid() const { return fIsValid; }
  /** Valid, with nothing left. */
  bool IsAtEnd() const { return fIsValid && fBytes.empty(); }
  size_t Left() const { return fBytes.size(); }

private:
  std::string_view fBytes;
  bool fIsValid = true;
};
