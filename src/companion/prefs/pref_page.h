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

/** A page of settings in rows, with a column of labels and one of controls. Each control is bound to a field of the
    settings. To be used on the window's thread. */
class TPrefPage : public TKRVView {
public:
  explicit TPrefPage(const char* name);

  /** Sets all texts again, in the current language. */
  virtual void Relabel();
  /** Shows the settings in the controls. */
  virtual void ShowValues(const TPrefValues& values);
  enum class TTaken { kNotMine, kTaken, kInvalid };
  /** Copies the control's value into `values`. Returns kInvalid, and changes nothing, if the text is invalid. */
  TTaken Take(const void* source, TPrefValues* values) const;

  // For pages whose settings are in a record of their own.
  /** The window opens: Revert returns to the current settings. */
  virtual void Opened() {}
  virtual void Revert() {}
  virtual void SetDefaults() {}

  BPoint PreferredSize() override;
  void AllAttached() override;

protected:
  /** `key` is the language key of the label, which is also the control's accessible name. */
  void AddCheckBox(const char* name, const char* key, bool TPrefValues::*field);
  void AddFreeCheckBox(const char* name, const char* key, std::function<bool(const TPrefValues&)> show,
                       std::function<void(bool, TPrefValues*)> take);
  struct TChoice {
    int32 value;
    const char* key;
  };
  void AddMenu(const char* name, const char* key, int32 TPrefValues::*field, const std::vector<TChoice>& choices);
  void AddColor(const char* name, const char* key, rgb_color TPrefValues::*field);
  /** `take` parses the text; false if it is invalid. */
  void AddText(const char* name, const char* key, std::function<std::string(const TPrefValues&)> show,
               std::function<bool(const std::string&, TPrefValues*)> take);
  /** A menu of fixed choices, by their numbers. */
  void AddChoices(const char* name, const char* key, std::function<int32(const TPrefValues&)> show,
                  std::function<void(int32, TPrefValues*)> take, const std::vector<TChoice>& choices);
  /** A menu whose choices the page sets itself; `show` returns the index for the values, -1 for none. */
  BMenuField* AddFreeMenu(const char* name, const char* key, std::function<int32(const TPrefValues&)> show,
                          std::function<void(int32, TPrefValues*)> take);
  /** Spans the whole width, except for an optional button at its right. */
  void AddWide(BView* view, BButton* button = nullptr);
  void LayOut() override;

private:
  struct TRow {
    BStringView* label = nullptr; // null: the view spans the whole width
    BView* view = nullptr;
    BButton* button = nullptr;
  };
  struct TBinding {
    BControl* control;
    std::function<void(const TPrefValues&)> show;
    std::function<bool(TPrefValues*)> take;
  };
  /** A row with a label and a control. */
  void AddLabelled(BControl* control, const char* key);
  float LabelWidth() const;
  float ControlWidth() const;
  float HeightOf(const TRow& row) const;

  std::vector<TRow> fRows;
  std::vector<TBinding> fBindings;
  std::vector<std::function<void()>> fRelabels;
};
