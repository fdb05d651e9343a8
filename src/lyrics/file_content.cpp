#include "lyrics/file_content.h"

#include "platform/storage/file.h"

#include <algorithm>
#include <array>

namespace {

constexpr size_t kStartSize = size_t{1} << 16;
/** Text may contain some stray control characters; other files are full of them. */
constexpr int64 kMostControls = 8;
constexpr int64 kMostControlsPercent = 2;

struct TSignature {
  size_t offset;
  std::string_view bytes;
};

using namespace std::string_view_literals;

constexpr std::array kSongs{
    TSignature{0, "ID3"sv},   TSignature{0, "fLaC"sv},
    TSignature{0, "OggS"sv},  TSignature{8, "WAVEfmt"sv},
    TSignature{8, "AIFF"sv},  TSignature{8, "AIFC"sv},
    TSignature{4, "ftyp"sv},  TSignature{0, "MAC "sv},
    TSignature{0, "wvpk"sv},  TSignature{0, "\x1A\x45\xDF\xA3"sv},
    TSignature{0, "#!AMR"sv}, TSignature{0, "caff\0\1"sv},
    TSignature{0, "DSD "sv},  TSignature{0, "\x30\x26\xB2\x75\x8E\x66\xCF\x11"sv},
};

constexpr std::array kOthers{
    TSignature{0, "\x89PNG\r\n"sv},
    TSignature{0, "\xFF\xD8\xFF"sv},
    TSignature{0, "GIF87a"sv},
    TSignature{0, "GIF89a"sv},
    TSignature{0, "%PDF-"sv},
    TSignature{0, "PK\3\4"sv},
    TSignature{0, "\x7F"
                  "ELF"sv},
    TSignature{0, "\x1F\x8B\x08"sv},
    TSignature{0, "7z\xBC\xAF\x27\x1C"sv},
    TSignature{0, "\xFF\xFE"sv},
    TSignature{0, "\xFE\xFF"sv}, // UTF-16, which is not supported
};

template <size_t N>
bool has_one_of(std::string_view start, const std::array<TSignature, N>& signatures) {
  return std::ranges::any_of(signatures, [start](const TSignature& signature) {
    return start.substr(std::min(signature.offset, start.size())).starts_with(signature.bytes);
  });
}

/** The sync word of MPEG audio (MP3, AAC), which is invalid in every encoding of lyrics; not a byte-order mark. */
bool is_mpeg_audio(std::string_view start) {
  return start.size() > 1 && start[0] == '\xFF' && (start[1] & '\xE0') == '\xE0' && start[1] < '\xFE';
}

/** Escape switches characters in JIS, and 0x1A stands for a lost character. */
bool is_foreign_control(char byte) {
  return static_cast<unsigned char>(byte) < ' ' && byte != '\t' && byte != '\n' && byte != '\r' && byte != '\f' &&
         byte != '\v' && byte != '\x1A' && byte != '\x1B';
}

} // namespace

TFileContent content_of(std::string_view start) {
  if (has_one_of(start, kSongs) || is_mpeg_audio(start)) return TFileContent::kSong;
  if (has_one_of(start, kOthers)) return TFileContent::kOther;
  start = start.substr(0, start.find_last_not_of('\0') + 1); // NULs at the end are usual
  const int64 controls = std::ranges::count_if(start, is_foreign_control);
  const bool isText = controls <= kMostControls || controls * 100 <= std::ssize(start) * kMostControlsPercent;
  return isText ? TFileContent::kText : TFileContent::kOther;
}

TFileContent content_of_file(const std::string& path) {
  BFile file(path.c_str(), B_READ_ONLY);
  if (file.InitCheck() != B_OK || !file.IsRegular()) return TFileContent::kText;
  std::string start(kStartSize, '\0');
  const ssize_t length = file.Read(start.data(), start.size());
  start.resize(static_cast<size_t>(std::max<ssize_t>(length, 0)));
  return content_of(start);
}
