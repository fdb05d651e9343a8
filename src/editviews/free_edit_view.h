#pragma once

#include "editviews/tracked_edit_view.h"
#include "platform/interface/text_view.h"

/** The lyrics as plain text, tags included. On the window's thread. */
class TFreeEditView : public BTextView, public TTrackedEditView {
public:
  explicit TFreeEditView(BRect frame);

  void SetMode(int32) override {} // has only one mode
  void SetLines(const std::list<std::string>& lines) override;
  void GetLines(std::list<std::string>* lines) const override;
  void SetModified(bool modified) override { fModified = modified; }
  bool IsModified() const override { return fModified; }
  /** Lines as in the file, regardless of wrapping; one wider than 10000 pixels counts as several. */
  void SetCurLine(int32 line) override;
  int32 CurLine() override;
  void SetAppearance() override;
  void LanguageChanged() override;
  std::string StatBarSymbol() const override;
  std::string DefaultStatBarStr() const override;
  void Clear() override;

  void FlushEdits() override { FlushChanges(); }
  bool Replay(const TReplay& replay) override;
  void ShowMatch(int32 line, const std::string& before, const std::string& match) override {
    SelectInLine(line, before, match);
  }

  void KeyDown(const char* bytes, int32 count) override;
  void AttachedToWindow() override;
  void FrameResized(float width, float height) override;

protected:
  /** Refuses what would make the document longer than any that can be opened. */
  void InsertText(std::string_view text) override;
  void PasteRefused() override;
  void TextChanged(const text_change& change) override;

private:
  void WidenTextRect();
  void FitTextRect();

  bool fModified = false;
  /** Lines of the document; the text has one more, after its last line feed. */
  int32 fLineCount = 0;
};
