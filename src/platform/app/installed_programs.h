#pragma once

#include <string>
#include <vector>

/** The folders of desktop entries, the most important first: "applications" in $XDG_DATA_HOME and in each folder of
    $XDG_DATA_DIRS, with the defaults of the base directory specification. Relative paths are ignored. */
std::vector<std::string> application_folders();

/** The argument vector of the program whose desktop entry in one of the folders has the signature; empty when there is
    none. As on a desktop, a file hides those of the same name in less important folders. Subfolders are not searched.
    Blocks on the disk: not for the display thread. */
std::vector<std::string> command_of(const std::string& signature, const std::vector<std::string>& folders);
