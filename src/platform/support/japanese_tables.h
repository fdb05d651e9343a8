#pragma once

#include <array>
#include <cstdint>

/** Conversion tables, built lazily from the C library's converters. 0 means "no such character". */
struct JapaneseTables {
  /** UTF-16 of each Shift-JIS lead and trail byte; row 0 holds the single bytes. */
  std::array<std::array<uint16_t, 256>, 256> fromSjis{};
  /** UTF-16 of each pair of JIS X 0208, both counted from 0x21. */
  std::array<std::array<uint16_t, 94>, 94> fromJis{};
  /** Shift-JIS bytes (one below 0x100) and JIS X 0208 pair of each UTF-16 unit. */
  std::array<uint16_t, 65536> toSjis{};
  std::array<uint16_t, 65536> toJis{};
};

/** Thread-safe. */
const JapaneseTables& japanese_tables();
