#include "platform/interface/follow.h"
#include "platform/interface/string_view.h"
#include "tests/support/with_window.h"

namespace {

struct PlainWindow : BWindow {
  PlainWindow() : BWindow({100, 100, 399, 299}, "plain") {}
  void FrameMoved(BPoint where) override {
    ++fMoves;
    fWhere = where;
    fMoveEnd = MoveEnd();
  }
  void FrameResized(float width, float height) override { fSize = {width, height}; }
  bool QuitRequested() override {
    ++fCloses;
    return false;
  }
  int fMoves = 0;
  int fCloses = 0;
  BPoint fWhere;
  std::optional<BPoint> fMoveEnd;
  BPoint fSize;
};

struct KeyView : BView {
  using BView::BView;
  void KeyDown(const char* bytes, int32 count) override { fKeys.append(bytes, static_cast<size_t>(count)); }
  void FrameResized(float width, float) override { fWidth = width; }
  std::string fKeys;
  float fWidth = 0;
};

} // namespace

using Window = WithWindow<PlainWindow>;

TEST(FollowParent, FollowedSidesKeepTheirDistance) {
  const BRect frame{10, 20, 50, 60};
  const BPoint before{100, 100}, after{130, 105};
  EXPECT_EQ(follow_parent(frame, B_FOLLOW_NONE, before, after), frame);
  EXPECT_EQ(frame.OffsetToCopy({0, 5}), (BRect{0, 5, 40, 45}));
  EXPECT_EQ(follow_parent(frame, B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM, before, after), (BRect{40, 25, 80, 65}));
}

TEST_F(Window, ViewsAndWidgetsFollowAResizeAlike) {
  auto* bar = new BStringView({0, 180, 299, 199}, "bar", "text", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
  auto* outer = new KeyView({0, 0, 299, 179}, "outer", B_FOLLOW_ALL_SIDES, B_FRAME_EVENTS);
  auto* inner = new BView({10, 10, 289, 169}, "inner", B_FOLLOW_ALL_SIDES);
  outer->AddChild(inner);
  fWindow->AddChild(outer);
  fWindow->AddChild(bar);
  hands::resize_by_hand(*fWindow, 500, 400);
  hands::settle(*fWindow);
  EXPECT_EQ(fWindow->fSize, (BPoint{499, 399}));
  EXPECT_EQ(bar->Frame(), (BRect{0, 380, 499, 399}));
  EXPECT_EQ(inner->Frame(), (BRect{10, 10, 489, 369}));
  EXPECT_EQ(outer->fWidth, 499);
  for (const char* name : {"bar", "outer", "inner"})
    EXPECT_EQ(hands::control_frame(*fWindow, name), fWindow->FindView(name)->Frame()) << name;

  inner->ResizeTo(100, 50);
  hands::resize_by_hand(*fWindow, 600, 450);
  hands::settle(*fWindow);
  EXPECT_EQ(hands::control_frame(*fWindow, "inner"), inner->Frame());
  EXPECT_EQ(bar->Frame(), (BRect{0, 430, 599, 449}));
  EXPECT_EQ(inner->Frame().Width(), 200);
}

TEST_F(Window, MovesAreCoalesced) {
  fWindow->fMoves = 0;
  for (int x = 1; x <= 50; ++x) hands::move_by_hand(*fWindow, 100 + x, 120);
  hands::settle(*fWindow);
  EXPECT_EQ(fWindow->fMoves, 1);
  EXPECT_EQ(fWindow->fWhere, (BPoint{150, 120}));
  hands::move_by_hand(*fWindow, 10, 20);
  hands::settle(*fWindow);
  EXPECT_EQ(fWindow->Frame().LeftTop(), (BPoint{10, 20}));
  fWindow->MoveTo(30, 40);
  hands::settle(*fWindow);
  EXPECT_EQ(fWindow->fMoveEnd, (BPoint{30, 40})) << "where the program's move ended";
}

TEST_F(Window, MoveResizeAndCloseAreNotLostWhileItsQueueIsFull) {
  while (fWindow->PostMessage('some') == B_OK) {
  }
  hands::move_by_hand(*fWindow, 70, 80);
  hands::resize_by_hand(*fWindow, 320, 240);
  hands::press_close_button(*fWindow);
  hands::wait_for_display();
  fWindow->fCloses = 0;
  hands::settle(*fWindow);
  EXPECT_EQ(fWindow->fWhere, (BPoint{70, 80}));
  EXPECT_EQ(fWindow->fSize, (BPoint{319, 239}));
  EXPECT_EQ(fWindow->fCloses, 1) << "the close button as well";
}

TEST_F(Window, KeysReachTheFocusedViewAsBytes) {
  auto* first = new KeyView({0, 0, 99, 99}, "first", B_FOLLOW_LEFT_TOP, B_NAVIGABLE);
  auto* second = new KeyView({100, 0, 199, 99}, "second", B_FOLLOW_LEFT_TOP, B_NAVIGABLE);
  for (BView* view : {first, second}) fWindow->AddChild(view);
  first->MakeFocus();
  for (const char* key : {"+", "Del", "Backspace", "Left", "F5", "Esc", "Tab", "-"}) Press(key);
  EXPECT_EQ(first->fKeys, "+\x7f\x08\x1c\x10\x1b");
  EXPECT_EQ(second->fKeys, "-");
  EXPECT_EQ(fWindow->CurrentFocus(), second);
  EXPECT_FALSE(first->IsFocus());
  for (BView* view : {first, second}) {
    EXPECT_EQ(fWindow->CurrentFocus(), second);
    fWindow->RemoveChild(view);
    delete view;
  }
  EXPECT_EQ(fWindow->CurrentFocus(), nullptr);
}

TEST(WindowLife, QuitRightAfterShowDestroysTheWindow) {
  std::atomic<int> alive{0};
  struct Counted : BWindow {
    explicit Counted(std::atomic<int>* count) : BWindow({0, 0, 99, 99}, "short-lived"), fCount(count) {
      ++*fCount;
      AddChild(new BStringView({0, 0, 99, 19}, "label", "text"));
    }
    ~Counted() override { --*fCount; }
    std::atomic<int>* fCount;
  };
  for (int i = 0; i < 50; ++i) {
    auto* window = new Counted(&alive);
    window->Show();
    if (window->Lock()) window->Quit();
  }
  EXPECT_EQ(alive, 0);
  hands::wait_for_display();
}
