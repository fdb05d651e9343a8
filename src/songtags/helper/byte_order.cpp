#include "songtags/helper/byte_order.h"

#include <algorithm>

uint64_t big_endian(std::string_view bytes) {
  uint64_t number = 0;
  for (const char byte : bytes) number = number << 8 | static_cast<unsigned char>(byte);
  return number;
}

std::string big_endian_bytes(uint64_t number, size_t size) {
  std::string bytes = little_endian_bytes(number, size);
  std::reverse(bytes.begin(), bytes.end());
  return bytes;
}

uint64_t little_endian(std::string_view bytes) {
  uint64_t number = 0;
  for (size_t i = bytes.size(); i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[i]);
  return number;
}

std::string little_endian_bytes(uint64_t number, size_t size) {
  std::string bytes;
  for (; bytes.size() < size; number >>= 8) bytes.push_back(static_cast<char>(number & 0xff));
  return bytes;
}

uint32_t synchsafe(std::string_view bytes) {
  uint32_t number = 0;
  for (const char byte : bytes) number = number << 7 | (static_cast<unsigned char>(byte) & 0x7f);
  return number;
}

std::string synchsafe_bytes(uint32_t number) {
  std::string bytes;
  for (int shift = 21; shift >= 0; shift -= 7) bytes.push_back(static_cast<char>(number >> shift & 0x7f));
  return bytes;
}
