#pragma once

#include <map>
#include <string>
#include <string_view>

/** Replaces each `from` that is not escaped: in a run of '#' that ends with the find's own, an even number means that
    the last one is escaped. "##" itself is always replaced. */
void decode(std::string* text, std::string_view from, std::string_view to);

/** "#n", "#t", "#s" and "##", in that order. */
void decode_escapes(std::string* text);

/** Replaces in each text the first "@key@" by that key's text as it is at that moment, in ascending order of the keys.
 */
void resolve_references(std::map<std::string, std::string>* texts);
