#pragma once

#include <list>
#include <string>

/** Unified diff of two texts with the same number of lines, compared line by line; empty if they are equal. */
std::string unified_diff(const std::string& name, const std::list<std::string>& old,
                         const std::list<std::string>& made);
