#pragma once

#include "platform/interface/list_view.h"

#include <memory>
#include <string>
#include <vector>

/** A row that counts how often it was drawn. */
class TestRow : public BListItem {
public:
  explicit TestRow(std::string text) : fText(std::move(text)) {}
  void DrawItem(BView* view, BRect frame, bool) override {
    ++fDrawn;
    view->FillRectLow(frame);
    view->DrawString(fText + (IsSelected() ? " *" : ""), {frame.left, frame.bottom - 3});
  }
  void SetText(std::string text) { fText = std::move(text); }
  int fDrawn = 0;

private:
  std::string fText;
};

/** Stamps the selected row at the space bar and goes on to the next, as the tag input view does. */
class StampList : public BListView {
public:
  using BListView::BListView;
  void KeyDown(const char* bytes, int32 count) override {
    if (bytes[0] != B_SPACE) return BListView::KeyDown(bytes, count);
    fStamped.push_back(CurrentSelection());
    Select(CurrentSelection() + 1);
    ScrollToSelection();
  }
  void Invoke() override { fInvoked.push_back(CurrentSelection()); }
  std::vector<int32> fStamped;
  std::vector<int32> fInvoked;
};
