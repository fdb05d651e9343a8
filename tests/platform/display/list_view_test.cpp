#include "platform/interface/list_view.h"
#include "platform/interface/scroll_view.h"
#include "platform/interface/window.h"
#include "tests/support/hands.h"
#include "tests/support/own_looper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

using testing::ElementsAre;

namespace {

/** Counts how often it is drawn. */
class TestRow : public BListItem {
public:
  explicit TestRow(std::string text) : fText(std::move(text)) {}
  void DrawItem(BView* view, BRect frame, bool) override {
    ++fDrawn;
    if (fText == "undrawable") throw std::runtime_error("this error is part of the test");
    view->DrawString(fText + (IsSelected() ? " *" : ""), {frame.left, frame.bottom - 3});
  }
  void SetText(std::string text) { fText = std::move(text); }
  int fDrawn = 0;

private:
  std::string fText;
};

/** The space bar stamps the selected row and selects the next one, as in the tag input view. */
class StampList : public BListView {
public:
  using BListView::BListView;
  void KeyDown(const char* bytes, int32 count) override {
    if (bytes[0] != B_SPACE) return BListView::KeyDown(bytes, count);
    fStamped.push_back(CurrentSelection());
    Select(CurrentSelection() + 1);
    ScrollToSelection();
  }
  std::vector<int32> fStamped;
};

class ListWindow : public BWindow {
public:
  ListWindow() : BWindow({100, 100, 399, 299}, "list") {
    SetRunsOnShow(false);
    fList = new StampList({0, 0, 299, 199}, "list", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES);
    AddChild(new BScrollView({0, 0, 299, 199}, "scroll", fList, B_FOLLOW_ALL_SIDES));
    fList->MakeFocus();
  }
  StampList* fList;
};

} // namespace

class ListView : public testing::Test {
protected:
  ListView() : fWindow(new ListWindow), fList(fWindow->fList) {}

  void Fill(int rows) {
    std::vector<BListItem*> items;
    for (int i = 0; i < rows; ++i) {
      fRows.push_back(std::make_unique<TestRow>("row " + std::to_string(i)));
      items.push_back(fRows.back().get());
    }
    fList->AddList(items);
  }

  void ShowWith(int rows) {
    Fill(rows);
    fWindow->Show();
    hands::settle(*fWindow);
  }

  int RowsDrawn() const {
    int drawn = 0;
    for (const auto& row : fRows) drawn += row->fDrawn > 0 ? 1 : 0;
    return drawn;
  }

  std::vector<std::unique_ptr<TestRow>> fRows;
  OwnLooper<ListWindow> fWindow;
  StampList* fList;
};

TEST_F(ListView, UnboundedLineIsTruncatedWhenDrawn) {
  std::string endless;
  for (int i = 0; i < 1000000; ++i) endless += "歌";
  Fill(1);
  fRows.front()->SetText(endless);
  fWindow->Show();
  hands::settle(*fWindow);
  const std::string drawn = hands::row_text(*fWindow, "list", 0);
  EXPECT_EQ(drawn, endless.substr(0, 16383));
}

TEST_F(ListView, ExceptionInOneRowDoesNotAffectTheOthers) {
  Fill(3);
  fRows[1]->SetText("undrawable");
  fWindow->Show();
  hands::settle(*fWindow);
  EXPECT_EQ(hands::row_text(*fWindow, "list", 0), "row 0");
  EXPECT_EQ(hands::row_text(*fWindow, "list", 2), "row 2");
  fRows[1]->SetText("mended");
  fList->InvalidateItem(1);
  hands::settle(*fWindow);
  EXPECT_EQ(hands::row_text(*fWindow, "list", 1), "mended");
}

TEST_F(ListView, ManyChangesInOneHandlerAreCoalesced) {
  ShowWith(3);
  for (int i = 0; i < 3000; ++i) {
    fList->MakeEmpty();
    fList->AddList({fRows[0].get()});
    fList->InvalidateItem(0);
  }
  EXPECT_LT(fWindow->CountMessages(), 10);
  hands::settle(*fWindow);
}

TEST_F(ListView, RowsRefusedByAFullQueueAreDrawnOnceItHasRoom) {
  ShowWith(3);
  while (fWindow->PostMessage('some') == B_OK) {
  }
  fRows[0]->SetText("changed");
  fList->InvalidateItem(0);
  hands::wait_for_display();
  EXPECT_TRUE(hands::until([this] {
    hands::settle(*fWindow);
    return hands::row_text(*fWindow, "list", 0) == "changed";
  }));
}

TEST_F(ListView, QueuedKeysAndClicksApplyToTheRightRows) {
  ShowWith(20);
  fList->Select(0);
  for (const char* key : {"Down", "Space", "Space", "Up", "Space"}) hands::press(*fWindow, key);
  hands::click(*fWindow, "list", {20, fList->ItemFrame(5).top + 3});
  hands::press(*fWindow, "Space");
  hands::settle(*fWindow);
  EXPECT_THAT(fList->fStamped, ElementsAre(1, 2, 2, 5));
  EXPECT_EQ(fList->CurrentSelection(), 6);
}

TEST_F(ListView, ArrowAndPageKeysStopAtTheEnds) {
  ShowWith(100);
  const auto page = static_cast<int32>(200 / (fList->ItemFrame(0).Height() + 1));
  const std::pair<const char*, int32> steps[] = {{"Down", 0}, {"Up", 0},       {"Down", 1},         {"Home", 0},
                                                 {"End", 99}, {"Down", 99},    {"PgUp", 99 - page}, {"PgDown", 99},
                                                 {"Home", 0}, {"PgDown", page}};
  for (const auto& [key, row] : steps) {
    hands::press(*fWindow, key);
    hands::settle(*fWindow);
    EXPECT_EQ(fList->CurrentSelection(), row) << key;
  }
}

TEST_F(ListView, OnlyVisibleRowsAreDrawn) {
  ShowWith(100000);
  const int onScreen = RowsDrawn();
  EXPECT_GT(onScreen, 5);
  EXPECT_LT(onScreen, 40);
  EXPECT_EQ(hands::row_text(*fWindow, "list", 0), "row 0");

  fList->Select(99999);
  fList->ScrollToSelection();
  hands::settle(*fWindow);
  EXPECT_LE(RowsDrawn(), 2 * onScreen + 1);
  EXPECT_EQ(hands::row_text(*fWindow, "list", 99999), "row 99999 *");
}

TEST_F(ListView, OnlyTheInvalidatedRowIsRedrawn) {
  ShowWith(10);
  for (const auto& row : fRows) row->fDrawn = 0;
  fRows[3]->SetText("changed");
  fList->Invalidate(fList->ItemFrame(3));
  fList->InvalidateItem(3);
  hands::settle(*fWindow);
  EXPECT_EQ(hands::row_text(*fWindow, "list", 3), "changed");
  EXPECT_EQ(RowsDrawn(), 1);
}

TEST_F(ListView, RefilledListShowsTheNewRowsFromTheTop) {
  ShowWith(1000);
  fList->Select(900);
  fList->ScrollToSelection();
  hands::settle(*fWindow);
  fList->MakeEmpty();
  fRows.clear();
  Fill(3);
  hands::settle(*fWindow);
  EXPECT_EQ(fList->CurrentSelection(), -1);
  EXPECT_EQ(hands::row_text(*fWindow, "list", 2), "row 2");
}

TEST_F(ListView, RowsOfDifferentHeightsAreStacked) {
  ShowWith(3);
  fRows[1]->SetHeight(49);
  fList->AddList({}); // lays the list out again
  EXPECT_EQ(fList->ItemFrame(1).Height(), 49);
  EXPECT_EQ(fList->ItemFrame(2).top, fList->ItemFrame(1).bottom + 1);
  hands::settle(*fWindow);
  hands::click(*fWindow, "list", {10, fList->ItemFrame(2).top + 2});
  hands::settle(*fWindow);
  EXPECT_EQ(fList->CurrentSelection(), 2);
}
