#pragma once

#include <map>
#include <string>
#include <string_view>

/** Replaces each unescaped `from`. It is escaped if the run of '#' up to and including its own is of even length; "##"
    is always replaced. */
void decode(std::string* text, std::string_view from, std::string_view to);

/** "#n", "#t", "#s" and "##", in that order. */
void decode_escapes(std::string* text);

/** Replaces the first "@key@" in each text by the current text of that key, in ascending order of the keys. */
void resolve_references(std::map<std::string, std::string>* texts);
