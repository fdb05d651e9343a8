#pragma once

#include "commands/key_bindings.h"
#include "platform/interface/list_view.h"

#include <functional>
#include <memory>
#include <vector>

/** The commands in the order of the table, each a row with its name and its key. */
class TCommandList : public BListView {
public:
  /** `whenSelected` is called when another row is selected. */
  explicit TCommandList(std::function<void()> whenSelected);
  ~TCommandList() override;

  /** Shows names and keys again, in the current language. */
  void ShowKeys(const TKeys& keys);
  TCommandId Selected() const;
  void SelectionChanged() override;

private:
  class TRow;

  std::function<void()> fWhenSelected; // empty while the list is deleted
  std::vector<std::unique_ptr<TRow>> fRows;
};
