#pragma once

#include "toolkit/krv_about_win.h"

/** What the About window of a plug-in tells, in the language of now. */
TKRVAboutWin::TContent about_content(const std::string& pluginPath);
