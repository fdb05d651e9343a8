#pragma once

#include <string>
#include <string_view>

/** What a file seems to hold, by its bytes, whatever its name. */
enum class TFileContent { kText, kSong, kOther };

/** By the start of a file; that of an empty one is text. A heuristic: signatures of common formats, and the share of
    control characters that no encoding of lyrics uses. Pure: any thread. */
TFileContent content_of(std::string_view start);
/** Reads the start. A file that cannot be read counts as text. */
TFileContent content_of_file(const std::string& path);
