#include "player/model/song_address.h"
#include "player/texts/player_texts.h"

#include "platform/support/cut_text.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

namespace {

/** PATH_MAX without its NUL. */
constexpr size_t kLongestAddress = 4095;
constexpr std::string_view kEllipsis = "…";

bool is_letter_or_digit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

bool is_control(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7f;
}

std::string lower_case(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return lower;
}

/** The text before the first colon, in lower case, if any parser could take it for a scheme; else empty. */
std::string scheme_of(std::string_view text) {
  const std::string_view name = text.substr(0, std::min(text.find(':'), text.size()));
  const auto isSchemeCharacter = [](char c) {
    return is_letter_or_digit(c) || std::string_view("+-._").find(c) != std::string_view::npos;
  };
  if (name.size() == text.size() || !std::ranges::all_of(name, isSchemeCharacter)) return {};
  return lower_case(name);
}

/** A "%" without two hexadecimal digits is kept. */
std::string percent_decoded(std::string_view text) {
  std::string decoded;
  for (size_t i = 0; i < text.size(); ++i) {
    unsigned char byte = 0;
    const char* const digits = text.data() + i + 1;
    const bool isEncoded =
        text[i] == '%' && i + 2 < text.size() && std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
    decoded += isEncoded ? static_cast<char>(byte) : text[i];
    if (isEncoded) i += 2;
  }
  return decoded;
}

/** Keeps blanks and control characters out of the request line. */
std::string percent_encoded(std::string_view text) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : text) {
    if (!is_control(c) && c != ' ') {
      encoded += c;
    } else {
      encoded.append({'%', kDigits[static_cast<unsigned char>(c) >> 4], kDigits[c & 0xf]});
    }
  }
  return encoded;
}

std::string normal(std::string_view path) {
  return std::filesystem::path(path).lexically_normal().string();
}

/** Text to show. A truncated URL could be the valid address of something else, so its host is made invalid. */
TSongAddress refused(std::string_view text, const char* reason) {
  std::string shown;
  for (const char c : cut_text(text)) shown += is_control(c) ? std::string("\uFFFD") : std::string(1, c);
  if (text.size() > kLongestText || shown.size() > kLongestText) {
    shown = cut_text(shown, kLongestText - kEllipsis.size());
    const size_t host = shown.find("//");
    if (!is_file_path(shown) && host != std::string::npos) shown.insert(host + 2, kEllipsis);
  }
  while (shown.ends_with(' ')) shown.pop_back();
  return {is_file_path(shown) ? normal(shown) : shown, reason};
}

TSongAddress file_address(std::string_view path) {
  if (path.find('\0') != std::string_view::npos) return refused(path, player_text("Player_Err_Name_NUL"));
  if (path.size() > kLongestAddress) return refused(path, player_text("Player_Err_Name_Long"));
  return {normal(path), {}};
}

/** `rest` is what follows "file:". */
TSongAddress file_url(std::string_view rest, std::string_view url) {
  if (rest.starts_with("//")) {
    rest.remove_prefix(2);
    const std::string host = lower_case(rest.substr(0, std::min(rest.find('/'), rest.size())));
    if (!host.empty() && host != "localhost") return refused(url, player_text("Player_Err_Elsewhere"));
    rest.remove_prefix(host.size());
  }
  if (!rest.starts_with('/')) return refused(url, player_text("Player_Err_No_Path"));
  return file_address(percent_decoded(rest));
}

bool is_host(std::string_view authority) {
  const auto isAllowed = [](char c) {
    return is_letter_or_digit(c) || std::string_view("-._~%!$&'()*+,;=:@[]").find(c) != std::string_view::npos;
  };
  const std::string_view host = authority.substr(authority.rfind('@') + 1);
  return !host.empty() && host.front() != ':' && std::ranges::all_of(authority, isAllowed);
}

TSongAddress network_address(const std::string& scheme, std::string_view url) {
  std::string_view rest = url.substr(scheme.size() + 1);
  if (!rest.starts_with("//")) return refused(url, player_text("Player_Err_No_Host"));
  rest.remove_prefix(2);
  const std::string_view host = rest.substr(0, std::min(rest.find_first_of("/?#"), rest.size()));
  if (!is_host(host)) return refused(url, player_text("Player_Err_No_Host"));
  std::string whole = scheme + "://" + std::string(host) + percent_encoded(rest.substr(host.size()));
  if (whole.size() > kLongestAddress) return refused(whole, player_text("Player_Err_Address_Long"));
  return {std::move(whole), {}};
}

} // namespace

TSongAddress song_address(std::string_view text, const std::string& folder) {
  const std::string scheme = scheme_of(text);
  if (scheme == "file") return file_url(text.substr(scheme.size() + 1), text);
  if (scheme == "http" || scheme == "https") return network_address(scheme, text);
  const bool namesScheme = !scheme.empty() && text.substr(scheme.size() + 1).starts_with("//");
  if (namesScheme) return refused(text, player_text("Player_Err_Scheme"));
  return file_address((std::filesystem::path(folder) / text).string());
}

std::string local_path(std::string_view text) {
  if (!is_file_path(text) && scheme_of(text) != "file") return {};
  TSongAddress address = song_address(text, "/");
  return address.refusal.empty() ? std::move(address.text) : std::string();
}
