#include "platform/interface/list_view.h"
#include "platform/interface/scroll_view.h"
#include "tests/support/with_window.h"

using testing::ElementsAre;

namespace {

/** Counts how often it is drawn. */
struct TestRow : BListItem {
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
struct StampList : BListView {
  using BListView::BListView;
  void KeyDown(const char* bytes, int32 count) override {
    if (bytes[0] != B_SPACE) return BListView::KeyDown(bytes, count);
    fStamped.push_back(CurrentSelection());
    Select(CurrentSelection() + 1);
    ScrollToSelection();
  }
  void SelectionChanged() override { ++fSelections; }
  std::vector<int32> fStamped;
  int fSelections = 0;
};

struct ListWindow : BWindow {
  ListWindow() : BWindow({100, 100, 399, 299}, "list") {
    fList = new StampList({0, 0, 299, 199}, "list", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES);
    AddChild(new BScrollView({0, 0, 299, 199}, "scroll", fList, B_FOLLOW_ALL_SIDES));
    fList->MakeFocus();
  }
  StampList* fList;
};

} // namespace

struct ListView : WithWindow<ListWindow> {
  void Fill(const std::vector<std::string>& texts) {
    std::vector<BListItem*> items;
    for (const std::string& text : texts) items.push_back(fRows.emplace_back(std::make_unique<TestRow>(text)).get());
    fList->AddList(items);
    hands::settle(*fWindow);
  }
  void Fill(int rows) {
    std::vector<std::string> texts;
    for (int i = 0; i < rows; ++i) texts.push_back("row " + std::to_string(i));
    Fill(texts);
  }
  std::string Drawn(int row) const { return hands::row_text(*fWindow, "list", row); }
  ptrdiff_t RowsDrawn() const {
    return std::ranges::count_if(fRows, [](const auto& row) { return row->fDrawn > 0; });
  }
  void GoTo(int row) {
    fList->Select(row);
    fList->ScrollToSelection();
    hands::settle(*fWindow);
  }

  std::vector<std::unique_ptr<TestRow>> fRows;
  StampList* const fList = fWindow->fList;
};

TEST_F(ListView, AnUnboundedLineAndAnExceptionInOneRowDoNotAffectTheOthers) {
  std::string endless;
  for (int i = 0; i < 1000000; ++i) endless += "歌";
  Fill({endless, "undrawable", "last"});
  EXPECT_EQ(Drawn(0), endless.substr(0, 16383));
  EXPECT_EQ(Drawn(2), "last");
  fRows[1]->SetText("mended");
  fList->InvalidateItem(1);
  hands::settle(*fWindow);
  EXPECT_EQ(Drawn(1), "mended");
}

TEST_F(ListView, ManyChangesInOneHandlerAreCoalesced) {
  Fill(3);
  for (int i = 0; i < 3000; ++i) {
    fList->MakeEmpty();
    fList->AddList({fRows[0].get()});
    fList->InvalidateItem(0);
  }
  EXPECT_LT(fWindow->CountMessages(), 10);
  hands::settle(*fWindow);
}

TEST_F(ListView, OnlyTheInvalidatedRowsAreRedrawnAfterAFullQueueOnceItHasRoom) {
  Fill(10);
  for (const bool isQueueFull : {false, true}) {
    while (isQueueFull && fWindow->PostMessage('some') == B_OK) continue;
    for (const auto& row : fRows) row->fDrawn = 0;
    fRows[3]->SetText(isQueueFull ? "changed again" : "changed");
    fList->Invalidate(fList->ItemFrame(3));
    fList->InvalidateItem(3);
    hands::wait_for_display();
    EXPECT_TRUE(hands::until(*fWindow, [&] { return Drawn(3) == (isQueueFull ? "changed again" : "changed"); }));
    EXPECT_EQ(RowsDrawn(), 1);
  }
}

TEST_F(ListView, QueuedKeysAndClicksApplyToTheRightRows) {
  Fill(20);
  fList->Select(0);
  for (const char* key : {"Down", "Space", "Space", "Up", "Space"}) hands::press(*fWindow, key);
  hands::click(*fWindow, "list", {20, fList->ItemFrame(5).top + 3});
  hands::press(*fWindow, "Space");
  hands::settle(*fWindow);
  EXPECT_THAT(fList->fStamped, ElementsAre(1, 2, 2, 5));
  EXPECT_EQ(fList->CurrentSelection(), 6);
}

TEST_F(ListView, ArrowAndPageKeysStopAtTheEnds) {
  Fill(100);
  const auto page = static_cast<int32>(200 / (fList->ItemFrame(0).Height() + 1));
  for (const auto& [key, row] : std::initializer_list<std::pair<const char*, int32>>{
           {"Down", 0}, {"Up", 0}, {"End", 99}, {"Down", 99}, {"PgUp", 99 - page}, {"Home", 0}, {"PgDown", page}}) {
    Press(key);
    EXPECT_EQ(fList->CurrentSelection(), row) << key;
  }
}

TEST_F(ListView, OnlyVisibleRowsAreDrawn) {
  Fill(100000);
  const auto onScreen = RowsDrawn();
  EXPECT_GT(onScreen, 5);
  EXPECT_LT(onScreen, 40);
  EXPECT_EQ(Drawn(0), "row 0");
  GoTo(99999);
  EXPECT_LE(RowsDrawn(), 2 * onScreen + 1);
  EXPECT_EQ(Drawn(99999), "row 99999 *");
}

TEST_F(ListView, EmptiedTellsOnceThatNothingIsSelectedAndRefilledShowsTheNewRowsFromTheTop) {
  Fill(1000);
  GoTo(900);
  fList->fSelections = 0;
  for (int i = 0; i < 2; ++i) fList->MakeEmpty();
  EXPECT_EQ(fList->fSelections, 1);
  fRows.clear();
  Fill(3);
  EXPECT_EQ(fList->CurrentSelection(), -1);
  EXPECT_EQ(Drawn(2), "row 2");
}

TEST_F(ListView, RowsOfDifferentHeightsAreStacked) {
  Fill(3);
  fRows[1]->SetHeight(49);
  fList->AddList({}); // lays the list out again
  hands::settle(*fWindow);
  EXPECT_EQ(fList->ItemFrame(2).top, fList->ItemFrame(1).top + 50);
  hands::click(*fWindow, "list", {10, fList->ItemFrame(2).top + 2});
  hands::settle(*fWindow);
  EXPECT_EQ(fList->CurrentSelection(), 2);
}
