#pragma once

#include "platform/kernel/unique_fd.h"

#include <string>

/** Opens a file for reading. Empty unless it is a regular file. Never blocks on a FIFO. */
UniqueFd open_regular_file(const std::string& path);
