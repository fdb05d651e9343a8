#pragma once

#include "platform/interface/font.h"
#include "platform/interface/list_item.h"

#include <string>

/** One line of the lyrics as a row: the whole line, its tag included. */
class TTagInputItem : public BListItem {
public:
  explicit TTagInputItem(std::string text) : fText(std::move(text)) {}

  std::string Text() const { return fText; }
  void SetText(const std::string& text) { fText = text; }

  /** Marks the line that is being sung. */
  void SetSung(bool sung) { fIsSung = sung; }

  void DrawItem(BView* view, BRect frame, bool drawsEverything) override;
  void Update(BView* view, const BFont* font) override;

private:
  std::string fText;
  bool fIsSung = false;
  /** Of the font of all rows; set by Update on the window's thread. */
  static font_height smFontH;
};
