#pragma once

#include "platform/interface/text_view.h"

#include <string>

/** The About page of the languages: translator and file of each, and which one is in use. Read-only, can be copied. */
class TLangInfoView : public BTextView {
public:
  TLangInfoView();

  /** Lists the language files of the folder. `usedFile` is empty while the built-in texts are in use. */
  void List(const std::string& folder, const std::string& usedFile);
  BPoint PreferredSize() override;
};
