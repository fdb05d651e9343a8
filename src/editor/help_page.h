#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/** Commands whose keys the user has changed, with the new keys, both as shown to the user. "" for no keys. */
using TChangedKeys = std::vector<std::pair<std::string, std::string>>;

/** The help page with a table of these keys at the top of the section of that locale, and with its pictures taken from
    `folder`, an absolute path. Without that section the table stands at the top of the page. Pure. */
std::string help_with_keys(std::string page, std::string_view locale, std::string_view heading,
                           const TChangedKeys& keys, std::string_view folder);
