#pragma once

#include <string>
#include <string_view>

/** A text that names a song, from wherever it came, after the check. */
struct TSongAddress {
  /** An absolute path or an http(s) URL. When refused, the text asked for, bounded and without control characters;
      written to a list and read back it is refused again, or the path of no file. */
  std::string text;
  /** Why this is not the address of a song, in a few words; empty for one that is. */
  std::string refusal;
};

/** The only check of what may be played. Songs are files of this machine, named by a path or a file: URL, and http: and
    https: URLs; everything else is refused. Relative paths start in `folder`. Pure; any thread. */
TSongAddress song_address(std::string_view text, const std::string& folder);

/** True for a checked address that is a file of this machine; false for URLs and for refused text. */
inline bool is_file_path(std::string_view address) {
  return address.starts_with('/');
}

/** The path that a file: URL or a plain absolute path names; empty for anything else. */
std::string local_path(std::string_view text);
