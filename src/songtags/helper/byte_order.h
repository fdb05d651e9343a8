#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/** Unsigned numbers of up to 8 bytes in tags. Pure: any thread. */

/** Most significant byte first. */
uint64_t big_endian(std::string_view bytes);
std::string big_endian_bytes(uint64_t number, size_t size);
/** Least significant byte first. */
uint64_t little_endian(std::string_view bytes);
std::string little_endian_bytes(uint64_t number, size_t size);
/** ID3v2 "synchsafe" numbers: 4 bytes of 7 bits each. */
uint32_t synchsafe(std::string_view bytes);
std::string synchsafe_bytes(uint32_t number);
