#pragma once

#include "editviews/word_row.h"
#include "lyrics/line_problems.h"
#include "platform/interface/font.h"
#include "platform/interface/list_item.h"

#include <optional>
#include <string>

/** One line of the lyrics as a row: the whole line, its tag included, or its words. */
class TTagInputItem : public BListItem {
public:
  explicit TTagInputItem(std::string text) : fText(std::move(text)) {}

  std::string Text() const { return fText; }
  void SetText(const std::string& text) { fText = text; }

  /** Marks the line that is being sung. */
  void SetSung(bool sung) { fIsSung = sung; }

  /** Before the row is drawn: what its sign shows. */
  void SetProblem(const TFoundProblem& problem) { fProblem = problem; }

  /** Before the row is drawn: how it shows words; nothing to show the whole line. */
  void SetWords(std::optional<TWordRow> words) { fWords = std::move(words); }

  void DrawItem(BView* view, BRect frame, bool drawsEverything) override;
  void Update(BView* view, const BFont* font) override;

private:
  void DrawText(BView* view, BRect frame, rgb_color background);
  void DrawWords(BView* view, BRect frame, rgb_color background);
  void DrawSign(BView* view, BRect frame, rgb_color background);

  std::string fText;
  TFoundProblem fProblem;
  std::optional<TWordRow> fWords;
  bool fIsSung = false;
  /** Of the font of all rows; set by Update on the window's thread. */
  static font_height smFontH;
};
