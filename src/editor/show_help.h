#pragma once

#include <string>

/** Path of the plug-in's image: the first loaded one whose path contains "gen_VesmoE"; empty if there is none. */
std::string vesmo_editor_fname();

/** Opens the help file next to the plug-in with the desktop's default program, or shows an error. */
void show_help();
