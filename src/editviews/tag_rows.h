#pragma once

#include "lyrics/line_times.h"
#include "lyrics/lines_change.h"
#include "lyrics/word_stamper.h"

#include <functional>
#include <list>
#include <string>

class BListView;
class BMessage;
class TEditListener;
class TTagInputItem;
class TTrackedEditView;

/** The lines of the tag input view as rows of its list: texts, times and selection. Every change is made here: it is
    shown, and the user's own are reported to the view's listener. Owns the items. Belongs to the view, on its window's
    thread. */
class TTagRows {
public:
  struct TCallbacks {
    std::function<void()> emptied;    // all rows are gone; others may follow
    std::function<void()> renumbered; // a command on lines was run: rows may have become other lines
  };
  /** Nothing is owned. `Empty` must be called before the list ends. */
  TTagRows(BListView* list, const TTrackedEditView* view, TCallbacks callbacks);

  /** Replaces all rows. */
  void SetLines(const std::list<std::string>& lines);
  /** Appends. */
  void GetLines(std::list<std::string>* lines) const;
  void Empty();
  bool IsModified() const { return fModified; }
  void SetModified(bool modified) { fModified = modified; }
  bool IsEmptyDocument() const;
  /** An empty document says how to fill it. */
  void ShowPlaceholder();

  int32 Count() const;
  /** Null for a row outside the list. */
  TTagInputItem* Item(int32 row) const;
  bool Has(int32 row) const { return Item(row) != nullptr; }
  /** Empty for a row outside the list. */
  std::string TextOf(int32 row) const;
  std::list<std::string> LinesAt(int32 first, int32 last) const;
  TLineTimes& Times() { return fTimes; }
  const TLineTimes& Times() const { return fTimes; }
  BListView& List() const { return *fList; }

  /** The row that keys work on; -1 for none. */
  int32 Current() const;
  TSelectedLines Selected() const;
  void Select(const TSelectedLines& lines);
  /** Selects that row and brings it into sight. No effect for a row outside the list. */
  void GoTo(int32 row);

  /** Changes one row by the user's command. */
  void ChangeRow(int32 row, const std::string& text, TEditKind kind);
  /** Changes several rows by the user's command, in one step. */
  void Edit(const TLinesChange& change, const TSelectedLines& selectedAfter);
  /** The same, but the rows remain the same lines, and the selection stays. */
  void Retime(const TLinesChange& change);
  /** Shows a change that is not the user's and is not reported. */
  void Change(const TLinesChange& change);

  void SetForm(TTagForm form) { fForm = form; }
  TTagForm Form() const { return fForm; }
  /** How new times are written. */
  TStampForms Forms() const;

  /** Null for none. */
  TEditListener* Listener() const;
  /** Undoes the last stamp and rewinds the song, for another try. */
  void RetakeRqtd() const;
  /** To the view's window, if it has one. */
  void Post(BMessage message) const;
  /** The status bar shows the text; a finding is to be noticed. */
  void Report(const std::string& text, const std::string& finding = {}) const;
  /** The text of that key and the number. */
  void Report(const char* key, int32 number) const;

private:
  void SetText(int32 row, const std::string& text);
  /** The row's time has changed, and so has the distance to it of the next tagged row. */
  void InvalidateNextTagged(int32 row);

  BListView* const fList;
  const TTrackedEditView* const fView;
  const TCallbacks fCallbacks;
  TLineTimes fTimes;
  TTagForm fForm = TTagForm::kExtended;
  bool fModified = false;
};
