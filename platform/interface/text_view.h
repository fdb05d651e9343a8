#pragma once

#include "platform/interface/view.h"

namespace display {
class TextPeer;
}

/** Several lines of text to edit, wrapped at the text rectangle's width. The text lives in the control on the display:
    changes are posted, questions wait for its answer. */
class BTextView : public BView {
public:
  BTextView(BRect frame, const char* name, BRect textRect, uint32 resizingMode = B_FOLLOW_LEFT_TOP,
            uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE);

  /** Replaces all; the caret goes to the start, nothing is left to undo. Does not call `InsertText`. */
  void SetText(std::string_view text);
  std::string Text() const;
  int32 TextLength() const;
  /** Puts text in place of the selection, through the hook. */
  void Insert(std::string_view text);
  void GetSelection(int32* start, int32* end) const;
  /** Byte offsets into the text, bounded to it. */
  void Select(int32 start, int32 end);
  void ScrollToSelection();
  /** Lines as shown: a wrapped line counts as several while the text rectangle is narrower than it. From 0. */
  void GoToLine(int32 line);
  int32 CurrentLine() const;
  int32 CountLines() const;
  void SetTextRect(BRect rect);
  BRect TextRect() const { return fTextRect; }
  void MakeEditable(bool editable);
  void SetFontAndColor(const BFont* font, uint32 mask, const rgb_color* color);
  void Undo();
  void Cut();
  void Copy();
  void Paste();
  void SelectAll();

  void DetachedFromWindow() override;
  void KeyDown(const char* bytes, int32 count) override;
  void MessageReceived(BMessage* message) override;

protected:
  /** Hook: text is typed, pasted, dropped or committed by an input method. The base puts it in. */
  virtual void InsertText(std::string_view text);
  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  display::TextPeer* Control() const;

  BRect fTextRect;
  bool fEditable = true;
  /** Holds the text while the view is detached. */
  std::string fDetachedText;
};
