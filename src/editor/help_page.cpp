#include "editor/help_page.h"

#include <algorithm>

namespace {

std::string escaped(std::string_view text) {
  std::string html;
  for (const char c : text) {
    switch (c) {
    case '&':
      html += "&amp;";
      break;
    case '<':
      html += "&lt;";
      break;
    case '"':
      html += "&quot;";
      break;
    default:
      html += c;
    }
  }
  return html;
}

/** Every byte that is not plain in a URL's path. */
std::string percent_encoded(std::string_view path) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  std::string url;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (kPlain.find(c) != std::string_view::npos)
      url += c;
    else
      (url += '%').append({kHex[byte / 16], kHex[byte % 16]});
  }
  return url;
}

void replace_all(std::string* text, std::string_view from, std::string_view to) {
  for (size_t at = text->find(from); at != std::string::npos; at = text->find(from, at + to.size()))
    text->replace(at, from.size(), to);
}

std::string table_of(std::string_view heading, const TChangedKeys& keys) {
  std::string table = "\n<h2>" + escaped(heading) + "</h2>\n<table>\n";
  for (const auto& [command, shown] : keys)
    table += "<tr><td>" + escaped(command) + "</td><td>" +
             (shown.empty() ? std::string("–") : "<kbd>" + escaped(shown) + "</kbd>") + "</td></tr>\n";
  return table + "</table>\n";
}

/** Behind the title of the locale's section. */
size_t place_of_table(const std::string& page, std::string_view locale) {
  const size_t section = page.find("<section lang=\"" + std::string(locale) + "\"");
  const size_t title = page.find("</h1>", section == std::string::npos ? 0 : section);
  return title == std::string::npos ? 0 : title + 5;
}

} // namespace

std::string help_with_keys(std::string page, std::string_view locale, std::string_view heading,
                           const TChangedKeys& keys, std::string_view folder) {
  page.insert(place_of_table(page, locale), table_of(heading, keys));
  replace_all(&page, "src=\"", "src=\"file://" + percent_encoded(folder) + "/");
  return page;
}
