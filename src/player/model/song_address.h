#pragma once

#include <string>
#include <string_view>

/** The address of a song, from an untrusted source, after validation. */
struct TSongAddress {
  /** An absolute path or an http(s) URL. If refused, the original text, truncated and without control characters, such
      that writing it to a list and reading it back yields a refused address again, or the path of no file. */
  std::string text;
  /** Why the text is refused, in a few words; empty if it is accepted. */
  std::string refusal;
};

/** Allow list of what may be played: local files, named by a path or a file: URL, and http: and https: URLs. Everything
    else is refused. Relative paths are resolved against `folder`. Pure; any thread. */
TSongAddress song_address(std::string_view text, const std::string& folder);

/** True for a validated address that is a local file; false for URLs and refused text. */
inline bool is_file_path(std::string_view address) {
  return address.starts_with('/');
}

/** The path that a file: URL or a plain absolute path names; empty for anything else. */
std::string local_path(std::string_view text);
