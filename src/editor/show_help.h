#pragma once

#include <string>

/** The path of the plug-in's own file: the first loaded image whose path contains "gen_VesmoE"; empty without one. */
std::string vesmo_editor_fname();

/** Opens the help file beside the plug-in with the desktop's preferred program, or tells the user that it cannot. */
void show_help();
