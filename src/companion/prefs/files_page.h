#pragma once

#include "companion/prefs/pref_page.h"

/** How lyrics files of other programs are read and written. */
class TFilesPage : public TPrefPage {
public:
  TFilesPage();
};
