#pragma once

#include "platform/app/handler.h"
#include "platform/interface/font.h"
#include "platform/interface/interface_defs.h"
#include "platform/support/geometry.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class BScrollView;
class BWindow;
struct BPicture;
namespace display {
class ViewPeer;
}

/** A rectangle in a window, with a peer on the display thread while it is attached to one. Owned by its parent, the
    topmost by their window; a removed view belongs to its remover. Every call on the window's thread or with the window
    locked; free of threads before it is attached. A view is the next handler of its children. */
class BView : public BHandler {
public:
  BView(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_LEFT_TOP, uint32 flags = 0);
  ~BView() override;

  void AddChild(BView* child);
  bool RemoveChild(BView* child);
  bool RemoveSelf();
  int32 CountChildren() const { return static_cast<int32>(fChildren.size()); }
  BView* ChildAt(int32 index) const;
  BWindow* Window() const { return fWindow; }
  /** This view or one below it; null when none bears the name. */
  BView* FindView(const char* name);

  /** In the parent's coordinates. */
  BRect Frame() const { return fFrame; }
  BRect Bounds() const { return {0, 0, fFrame.Width(), fFrame.Height()}; }
  void MoveTo(BPoint leftTop);
  void MoveTo(float x, float y) { MoveTo(BPoint{x, y}); }
  void ResizeTo(float width, float height);
  void SetResizingMode(uint32 mode);
  /** The size, as rectangles tell it, at which nothing of the view is cut; its own while it is detached. Waits for the
      display. */
  virtual BPoint PreferredSize();
  uint32 Flags() const { return fFlags; }

  /** Calls nest: a view hidden twice is shown by the second Show. */
  void Show();
  void Hide();
  bool IsHidden() const;
  /** By its own doing, whatever its parent and its window do. */
  bool IsHiddenInParent() const { return fHideLevel > 0; }
  virtual void MakeFocus(bool focused = true);
  bool IsFocus() const;

  void SetViewColor(rgb_color color);
  void SetHighColor(rgb_color color) { fHighColor = color; }
  rgb_color HighColor() const { return fHighColor; }
  /** Part of the drawing state that callers set; no drawing call uses it, since text is blended with what is below. */
  void SetLowColor(rgb_color color) { fLowColor = color; }
  virtual void SetFont(const BFont* font);
  void GetFont(BFont* font) const { *font = fFont; }
  void SetToolTip(std::string_view text);
  const std::string& ToolTip() const { return fToolTip; }
  /** Shows the tip below the view, or takes it away, without waiting for the mouse. */
  void ShowToolTip(bool shown);
  void SetAccessibleName(std::string_view name);
  void SetAccessibleDescription(std::string_view description);
  /** Before the view is attached. */
  void SetAccessibleRole(accessible_role role) { fAccessibleRole = role; }

  /** Asks for a new drawing. */
  void Invalidate() { Invalidate(Bounds()); }
  virtual void Invalidate(BRect rect);
  /** Drawing: recorded inside `Draw` or a list item's `DrawItem`, without effect elsewhere. */
  void FillRect(BRect rect);
  void StrokeRect(BRect rect);
  void DrawString(std::string_view text, BPoint baseLineStart);

  /** Hooks, on the window's thread. */
  virtual void AttachedToWindow() {}
  /** After the children were attached. */
  virtual void AllAttached() {}
  virtual void DetachedFromWindow() {}
  virtual void Draw(BRect updateRect);
  /** A key pressed while the view has the focus; the whole event is the window's current message (B_KEY_DOWN: string
      "bytes", int32 "modifiers", int32 "key_repeat" (> 0: held down), int64 "when" (µs), int32 "key_code" (the
     display's own)). The base hands it to the control on the display. */
  virtual void KeyDown(const char* bytes, int32 count);
  virtual void FrameMoved(BPoint leftTop);
  virtual void FrameResized(float width, float height);
  virtual void WindowActivated(bool active);
  void MessageReceived(BMessage* message) override;

protected:
  /** Makes the control on the display when the view is attached. */
  virtual std::shared_ptr<display::ViewPeer> MakePeer();
  /** Null while detached. */
  display::ViewPeer* Peer() const;

private:
  friend class BWindow;
  friend class BListView;
  friend class BScrollView;
  friend class BTabView;
  void AttachTo(BWindow* window, display::ViewPeer* parentPeer);
  void Detach();
  void HandStateToPeer();
  void SetFrame(BRect frame);
  void FollowParent();
  void FrameChanged(BRect old);
  BPoint ParentSize() const;
  void TellActivated(bool active);
  /** What the hook draws; when it throws, what it drew until then. */
  BPicture Recorded(const std::function<void()>& draw);

  BRect fFrame;
  /** The frame last set by call, and the parent's size then: what following the parent is counted from. */
  BRect fSetFrame;
  BPoint fSetParentSize;
  uint32 fResizingMode;
  uint32 fFlags;
  int32 fHideLevel = 0;
  bool fHasFocus = false;
  rgb_color fViewColor{0, 0, 0, 0}; // without colour: the display's own
  rgb_color fHighColor{0, 0, 0, 255};
  rgb_color fLowColor{255, 255, 255, 255};
  BFont fFont;
  std::string fToolTip;
  std::string fAccessibleName;
  std::string fAccessibleDescription;
  std::optional<accessible_role> fAccessibleRole; // else that of the control
  BPicture* fRecording = nullptr;
  BWindow* fWindow = nullptr;
  BView* fParent = nullptr;
  std::vector<BView*> fChildren;
  std::shared_ptr<display::ViewPeer> fPeer;
};
