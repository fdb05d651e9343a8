#pragma once

#include "platform/interface/text_change.h"
#include "platform/interface/view.h"

namespace display {
class TextPeer;
}

/** Several lines of text to edit, wrapped at the view's width. The text lives in the control on the display:
    changes are posted, questions wait for its answer. */
class BTextView : public BView {
public:
  BTextView(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_LEFT_TOP,
            uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE);

  /** Replaces all; the caret goes to the start, nothing is left to undo. Does not call `InsertText`. */
  void SetText(std::string_view text);
  std::string Text() const;
  void ScrollToSelection();
  /** Lines of the text rectangle's width: one that does not fit counts as several. From 0. */
  void GoToLine(int32 line);
  int32 CurrentLine() const;
  /** The text is shown as wide as the view; a wider rectangle is one to count lines in. */
  void SetTextRect(BRect rect);
  /** Lines that line feeds part give way to others, as when the program undoes a change: no hook is called. What the
      user did before is told to the hook first. False, and nothing done, when the change does not fit that any more. */
  bool ReplaceLines(const text_change& change);
  /** Every change made so far, by keys still on their way too, has been told to the hook. Waits for the display. */
  void FlushChanges();
  void MakeEditable(bool editable);
  void SetFontAndColor(const BFont& font, rgb_color color);

  void DetachedFromWindow() override;
  void KeyDown(const char* bytes, int32 count) override;
  void MessageReceived(BMessage* message) override;

protected:
  /** Hook: the user, or text put in by `InsertText`, has changed the text. */
  virtual void TextChanged(const text_change&) {}
  /** Hook: text is typed, pasted, dropped or committed by an input method. The base puts it in. */
  virtual void InsertText(std::string_view text);
  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  void CommandPressed(const BMessage& message);
  display::TextPeer* Control() const;

  bool fEditable = true;
  bool fHasTextColor = false; // else the display's own
  /** Holds the text while the view is detached. */
  std::string fDetachedText;
};
