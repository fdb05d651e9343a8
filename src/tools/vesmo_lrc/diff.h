#pragma once

#include <list>
#include <string>

/** The unified difference of two texts with as many lines, each beside its counterpart; empty for equal ones. */
std::string unified_diff(const std::string& name, const std::list<std::string>& old,
                         const std::list<std::string>& made);
