#include "songtags/helper/mp4_edit.h"

#include "songtags/helper/byte_order.h"

#include <functional>
#include <limits>
#include <vector>

namespace {

constexpr size_t kHeaderBytes = 8;
constexpr std::string_view kLyricsAtom = "\xA9lyr";

/** Also ends the recursion. */
struct TDamaged {};

struct TAtom {
  std::string_view name;
  std::string_view bytes; // header included
  std::string_view Body() const { return bytes.substr(kHeaderBytes); }
};

std::string atom(std::string_view name, std::string_view body) {
  if (body.size() > std::numeric_limits<uint32_t>::max() - kHeaderBytes) throw TDamaged();
  return big_endian_bytes(kHeaderBytes + body.size(), 4).append(name).append(body);
}

/** Some writers end a list with four zero bytes. Atoms with 64-bit sizes do not occur within `moov`. */
std::vector<TAtom> atoms_in(std::string_view body) {
  std::vector<TAtom> atoms;
  while (body.size() >= kHeaderBytes) {
    const uint64_t size = big_endian(body.substr(0, 4));
    if (size < kHeaderBytes || size > body.size()) throw TDamaged();
    atoms.push_back({body.substr(4, 4), body.substr(0, size)});
    body.remove_prefix(size);
  }
  if (body.find_first_not_of('\0') != std::string_view::npos) throw TDamaged();
  return atoms;
}

using TEdit = std::function<std::string(std::string_view body)>;

/** The body with the first child of that name edited, or with a new one, which is edited from nothing. */
std::string with_child(std::string_view body, std::string_view name, const TEdit& edit) {
  std::string edited;
  bool isDone = false;
  for (const TAtom& child : atoms_in(body)) {
    const bool isIt = !isDone && child.name == name;
    edited += isIt ? atom(name, edit(child.Body())) : std::string(child.bytes);
    isDone = isDone || isIt;
  }
  return isDone ? edited : edited + atom(name, edit({}));
}

std::string new_meta_start() {
  std::string handler(8, '\0');
  handler.append("mdirappl").append(9, '\0');
  return std::string(4, '\0').append(atom("hdlr", handler));
}

/** In files of the older QuickTime format the atom has no version in front of its children. */
std::string edited_meta(std::string_view meta, const TEdit& editList) {
  const std::string fresh = meta.empty() ? new_meta_start() : std::string();
  if (meta.empty()) meta = fresh;
  if (meta.size() < 4) throw TDamaged();
  const size_t start = meta.size() >= kHeaderBytes && meta.substr(4, 4) == "hdlr" ? 0 : 4;
  return std::string(meta.substr(0, start)) + with_child(meta.substr(start), "ilst", editList);
}

/** Adds `move` to the offsets that are not below `from`. */
std::string moved_offsets(std::string_view table, size_t width, uint64_t from, uint64_t move) {
  if (table.size() < 8) throw TDamaged();
  const uint64_t count = big_endian(table.substr(4, 4));
  if (count > (table.size() - 8) / width) throw TDamaged();
  std::string moved(table);
  for (uint64_t i = 0; i < count; ++i) {
    const uint64_t old = big_endian(table.substr(8 + i * width, width));
    const uint64_t made = old < from ? old : old + move;
    if (width == 4 && made > std::numeric_limits<uint32_t>::max()) throw TDamaged();
    moved.replace(8 + i * width, width, big_endian_bytes(made, width));
  }
  return moved;
}

/** Walks down to the chunk offset tables of all tracks. The sizes stay. */
std::string with_moved_chunks(std::string_view body, uint64_t from, uint64_t move) {
  std::string edited;
  for (const TAtom& child : atoms_in(body)) {
    const bool isParent = child.name == "trak" || child.name == "mdia" || child.name == "minf" || child.name == "stbl";
    if (child.name == "mvex" || child.name == "saio") throw TDamaged(); // more offsets elsewhere
    if (isParent) {
      edited += atom(child.name, with_moved_chunks(child.Body(), from, move));
    } else if (child.name == "stco" || child.name == "co64") {
      edited += atom(child.name, moved_offsets(child.Body(), child.name == "stco" ? 4 : 8, from, move));
    } else {
      edited += child.bytes;
    }
  }
  return edited.append(body.substr(edited.size())); // zeros after the last atom
}

std::string with_lyrics(std::string_view list, const std::string& lyrics) {
  std::string edited;
  for (const TAtom& item : atoms_in(list)) {
    if (item.name != kLyricsAtom) edited += item.bytes;
  }
  constexpr uint64_t kUtf8 = 1;
  const std::string data = big_endian_bytes(kUtf8, 4) + std::string(4, '\0') + lyrics;
  return edited + atom(kLyricsAtom, atom("data", data));
}

} // namespace

std::optional<std::string> edited_moov(std::string_view moov, uint64_t offset, const std::string& lyrics) {
  try {
    const std::vector<TAtom> whole = atoms_in(moov);
    if (whole.size() != 1 || whole[0].name != "moov" || whole[0].bytes.size() != moov.size()) return {};
    const TEdit inList = [&](std::string_view list) { return with_lyrics(list, lyrics); };
    const TEdit inMeta = [&](std::string_view meta) { return edited_meta(meta, inList); };
    const TEdit inUdta = [&](std::string_view udta) { return with_child(udta, "meta", inMeta); };
    const std::string body = with_child(whole[0].Body(), "udta", inUdta);
    const uint64_t move = body.size() + kHeaderBytes - moov.size(); // wraps around if it became shorter
    return atom("moov", with_moved_chunks(body, offset + moov.size(), move));
  } catch (const TDamaged&) {
    return {};
  }
}
