#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/** Word wrap. Breaks at blanks, which are dropped, or between East Asian characters according to their line-breaking
    rules; a longer word is split. Every row has at least one character; never returns an empty vector. */
std::vector<std::string> wrap_text(std::string_view text, float width,
                                   const std::function<float(std::string_view)>& measure);
