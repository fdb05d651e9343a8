#pragma once

#include "platform/interface/text_view.h"

#include <string>

/** The page that lists the languages present: who wrote each, its file, and which one is in use. Read and copied, not
    edited. */
class TLangInfoView : public BTextView {
public:
  TLangInfoView();

  /** Reads the language files of the folder. `usedFile` empty: the texts built into the program are in use. */
  void List(const std::string& folder, const std::string& usedFile);
  BPoint PreferredSize() override;
};
