#include "player/plugins/elf_image.h"

#include "player/texts/player_texts.h"

#include <elf.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <vector>

using TElfHeader = ElfW(Ehdr);
using TSegment = ElfW(Phdr);

/** The ELF header of this program's own image; the symbol is defined by the linker. */
extern const TElfHeader own_elf_header __asm__("__ehdr_start") __attribute__((visibility("hidden")));

namespace {

constexpr size_t kMaxSegments = 256;    // real images have a dozen
constexpr uint64 kMaxNoteBytes = 65536; // of one segment

bool is_inside(uint64 offset, uint64 bytes, uint64 size) {
  return offset <= size && bytes <= size - offset;
}

bool read_at(int file, uint64 offset, void* bytes, size_t count) {
  return pread(file, bytes, count, static_cast<off_t>(offset)) == static_cast<ssize_t>(count);
}

/** Same class, byte order, version and machine as this program. */
bool is_for_this_program(const TElfHeader& header) {
  return std::memcmp(header.e_ident, own_elf_header.e_ident, EI_VERSION + 1) == 0 && header.e_type == ET_DYN &&
         header.e_machine == own_elf_header.e_machine;
}

/** False if the table is truncated. */
bool read_segments(int file, uint64 size, const TElfHeader& header, std::vector<TSegment>* segments) {
  const size_t count = header.e_phnum;
  if (header.e_phentsize != sizeof(TSegment) || count == 0 || count > kMaxSegments) return false;
  segments->resize(count);
  const size_t bytes = count * sizeof(TSegment);
  return is_inside(header.e_phoff, bytes, size) && read_at(file, header.e_phoff, segments->data(), bytes);
}

bool is_whole(const TSegment& segment, uint64 size) {
  const bool fitsMemory = segment.p_type != PT_LOAD || segment.p_filesz <= segment.p_memsz;
  return fitsMemory && is_inside(segment.p_offset, segment.p_filesz, size);
}

/** Linkers put this table last, so checking it detects any truncation. A stripped image may lack it. */
bool has_whole_sections(const TElfHeader& header, uint64 size) {
  if (header.e_shoff == 0) return true;
  const uint64 bytes = std::max<uint64>(header.e_shnum, 1) * sizeof(ElfW(Shdr));
  return header.e_shentsize == sizeof(ElfW(Shdr)) && is_inside(header.e_shoff, bytes, size);
}

bool has(const std::vector<TSegment>& segments, uint32 type) {
  return std::any_of(segments.begin(), segments.end(), [type](const TSegment& s) { return s.p_type == type; });
}

uint64 aligned(uint64 bytes, uint64 alignment) {
  return (bytes + alignment - 1) / alignment * alignment;
}

/** The build ID among the notes of one segment; empty if there is none. */
std::string build_id_in(const std::vector<char>& notes, uint64 alignment) {
  ElfW(Nhdr) note{};
  for (uint64 at = 0; is_inside(at, sizeof note, notes.size());) {
    std::memcpy(&note, notes.data() + at, sizeof note);
    const uint64 name = at + sizeof note;
    const uint64 value = name + aligned(note.n_namesz, alignment);
    if (!is_inside(name, note.n_namesz, notes.size()) || !is_inside(value, note.n_descsz, notes.size())) return {};
    const bool isGnu = note.n_namesz == 4 && std::memcmp(notes.data() + name, "GNU", 4) == 0;
    if (isGnu && note.n_type == NT_GNU_BUILD_ID) return {notes.data() + value, note.n_descsz};
    at = value + aligned(note.n_descsz, alignment);
  }
  return {};
}

std::string build_id(int file, const std::vector<TSegment>& segments) {
  for (const TSegment& segment : segments) {
    if (segment.p_type != PT_NOTE || segment.p_filesz > kMaxNoteBytes) continue;
    std::vector<char> notes(segment.p_filesz);
    if (!read_at(file, segment.p_offset, notes.data(), notes.size())) continue;
    if (std::string id = build_id_in(notes, segment.p_align == 8 ? 8 : 4); !id.empty()) return id;
  }
  return {};
}

} // namespace

TElfImage read_elf_image(int file, uint64 size) {
  TElfHeader header{};
  const bool isElf = size >= sizeof header && read_at(file, 0, &header, sizeof header) &&
                     std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0;
  if (!isElf) return {.error = player_text("Player_Plugin_No_Library")};
  if (!is_for_this_program(header)) return {.error = player_text("Player_Plugin_Machine")};
  std::vector<TSegment> segments;
  const bool isWhole = read_segments(file, size, header, &segments) &&
                       std::all_of(segments.begin(), segments.end(),
                                   [size](const TSegment& segment) { return is_whole(segment, size); }) &&
                       has(segments, PT_LOAD) && has(segments, PT_DYNAMIC) && has_whole_sections(header, size);
  if (!isWhole) return {.error = player_text("Player_Plugin_Damaged")};
  return {.buildId = build_id(file, segments)};
}
