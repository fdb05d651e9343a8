#pragma once

#include "toolkit/krv_about_win.h"

/** The content of the About window, in the current language. */
TKRVAboutWin::TContent about_content(const std::string& pluginPath);
