#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/** The text in rows no wider than that, as far as a single character is not. Rows end at blanks, which are dropped
    there, or between East Asian characters, none of which begins with what must not begin a line. Never empty. */
std::vector<std::string> wrap_text(std::string_view text, float width,
                                   const std::function<float(std::string_view)>& measure);
