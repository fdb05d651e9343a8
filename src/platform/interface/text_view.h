#pragma once

#include "platform/interface/text_change.h"
#include "platform/interface/view.h"

namespace display {
class TextPeer;
}

/** A multi-line text editor that wraps at the view's width. The text is kept in the widget: setters are posted to the
    display thread, getters block on it. */
class BTextView : public BView {
public:
  BTextView(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_LEFT_TOP,
            uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE);

  /** Replaces the whole text and moves the caret to the start. Calls neither hook. */
  void SetText(std::string_view text);
  std::string Text() const;
  void ScrollToSelection();
  /** Lines as wrapped at the text rectangle's width, from 0. */
  void GoToLine(int32 line);
  int32 CurrentLine() const;
  /** Selects `text`, which follows `before` in that line of the text, and scrolls to it. */
  void SelectInLine(int32 line, std::string_view before, std::string_view text);
  /** Affects the counting of lines only: the text is always shown as wide as the view. */
  void SetTextRect(BRect rect);
  /** Replaces lines, e.g. to undo a change, without calling a hook; but first reports the user's pending changes to the
      hook. False, and no effect, when there are newer ones. */
  bool ReplaceLines(const text_change& change);
  /** Reports all changes made so far to the hook. Blocks on the display thread. */
  void FlushChanges();
  void MakeEditable(bool editable);
  /** Shown while the text is empty; none if it is empty itself. */
  void SetPlaceholder(const std::string& text);
  void Cut() { DoCommand('X'); }
  void Copy() { DoCommand('C'); }
  void Paste() { DoCommand('V'); }
  void SelectAll() { DoCommand('A'); }
  void SetFontAndColor(const BFont& font, rgb_color color);

  void DetachedFromWindow() override;
  void KeyDown(const char* bytes, int32 count) override;
  void MessageReceived(BMessage* message) override;

protected:
  /** Hook: the user, or `InsertText`, has changed the text. */
  virtual void TextChanged(const text_change&) {}
  /** Hook: text is typed, pasted, dropped or committed by an input method. The base inserts it. */
  virtual void InsertText(std::string_view text);
  /** Hook: more than kMostPastedBytes were to be pasted or dropped, and are not. */
  virtual void PasteRefused() {}
  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  /** As if the user had pressed that key with Ctrl. */
  void DoCommand(char letter);
  void CommandPressed(const BMessage& message);
  void TextEntered(const BMessage& message);
  display::TextPeer* Control() const;

  bool fEditable = true;
  bool fHasTextColor = false; // else the display's own
  std::string fPlaceholder;
  /** Holds the text while the view is detached. */
  std::string fDetachedText;
};
