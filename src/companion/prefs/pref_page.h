#pragma once

#include "plugin/pref.h"
#include "toolkit/krv_view.h"

#include <functional>
#include <string>
#include <vector>

class BButton;
class BControl;
class BMenuField;
class BStringView;

/** A page of settings: rows from the top, the labels in one column and the controls in another. Each control is bound
    to a field of the settings. On the window's thread. */
class TPrefPage : public TKRVView {
public:
  explicit TPrefPage(const char* name);

  /** Takes every text anew, in the language of now. */
  virtual void Relabel();
  /** The settings into the controls. */
  virtual void ShowValues(const TPrefValues& values);
  enum class TTaken { kNotMine, kTaken, kUnfit };
  /** What the control says into its field; a text that does not fit changes nothing. */
  TTaken Take(const void* source, TPrefValues* values) const;

  BPoint PreferredSize() override;
  void AllAttached() override;

protected:
  /** `key` is the language key of the label; the control is called by it too. */
  void AddCheckBox(const char* name, const char* key, bool TPrefValues::*field);
  struct TChoice {
    int32 value;
    const char* key;
  };
  void AddMenu(const char* name, const char* key, int32 TPrefValues::*field, const std::vector<TChoice>& choices);
  void AddColor(const char* name, const char* key, rgb_color TPrefValues::*field);
  /** A text that `take` makes a value of; false when it is none. */
  void AddText(const char* name, const char* key, std::function<std::string(const TPrefValues&)> show,
               std::function<bool(const std::string&, TPrefValues*)> take);
  /** A menu whose choices the page sees to; `show` returns the index for the values, -1 for none. */
  BMenuField* AddFreeMenu(const char* name, const char* key, std::function<int32(const TPrefValues&)> show,
                          std::function<void(int32, TPrefValues*)> take);
  /** Over the whole width; a button behind it keeps its own. */
  void AddWide(BView* view, BButton* button = nullptr);
  void LayOut() override;

private:
  struct TRow {
    BStringView* label = nullptr; // null: the view has the width for itself
    BView* view = nullptr;
    BButton* button = nullptr;
  };
  struct TBinding {
    BControl* control;
    std::function<void(const TPrefValues&)> show;
    std::function<bool(TPrefValues*)> take;
  };
  /** The row of a control with its label beside it. */
  void AddLabelled(BControl* control, const char* key);
  float LabelWidth() const;
  float ControlWidth() const;
  float HeightOf(const TRow& row) const;

  std::vector<TRow> fRows;
  std::vector<TBinding> fBindings;
  std::vector<std::function<void()>> fRelabels;
};
