#pragma once

#include "companion/prefs/pref_page.h"

/** How lyrics are read, and how new ones are written. */
class TFilesPage : public TPrefPage {
public:
  TFilesPage();
};
