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

/** A rectangle in a window, with a peer on the display thread while it is attached. Owned by its parent or window;
    removing it passes ownership to the caller. Once attached, all calls need the window's thread or lock (checked in
    debug builds). A view is the next handler of its children. */
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
  /** This view or a descendant; null when none has the name. */
  BView* FindView(const char* name);

  /** In the parent's coordinates. */
  BRect Frame() const { return fFrame; }
  BRect Bounds() const { return {0, 0, fFrame.Width(), fFrame.Height()}; }
  void MoveTo(BPoint leftTop);
  void MoveTo(float x, float y) { MoveTo(BPoint{x, y}); }
  void ResizeTo(float width, float height);
  void SetResizingMode(uint32 mode);
  /** Smallest size (as BRect::Width and Height) at which nothing is cut off; the current one while detached. Blocks on
      the display thread. */
  virtual BPoint PreferredSize();
  uint32 Flags() const { return fFlags; }

  /** Calls nest: a view hidden twice is shown by the second Show. */
  void Show();
  void Hide();
  bool IsHidden() const;
  /** Hidden itself, regardless of its parent and window. */
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
  /** Shows the tip below the view, or hides it, regardless of the mouse. */
  void ShowToolTip(bool shown);
  void SetAccessibleName(std::string_view name);
  void SetAccessibleDescription(std::string_view description);
  /** Before the view is attached. */
  void SetAccessibleRole(accessible_role role) { fAccessibleRole = role; }

  /** Redraws the view. */
  void Invalidate() { Invalidate(Bounds()); }
  virtual void Invalidate(BRect rect);
  /** FillRect, StrokeRect and DrawString record into a picture inside `Draw` or a list item's `DrawItem`; elsewhere
      they have no effect. */
  void FillRect(BRect rect);
  void StrokeRect(BRect rect);
  void DrawString(std::string_view text, BPoint baseLineStart);

  /** Hooks, on the window's thread. */
  virtual void AttachedToWindow() {}
  /** After the children were attached. */
  virtual void AllAttached() {}
  virtual void DetachedFromWindow() {}
  virtual void Draw(BRect updateRect);
  /** A key was pressed while the view has the focus. The window's current message has the whole event (B_KEY_DOWN:
      string "bytes", int32 "modifiers", int32 "key_repeat" (> 0: held down), int64 "when" (µs), int32 "key_code"
      (Qt's)). The base returns it to the widget. */
  virtual void KeyDown(const char* bytes, int32 count);
  virtual void FrameMoved(BPoint leftTop);
  virtual void FrameResized(float width, float height);
  virtual void WindowActivated(bool active);
  void MessageReceived(BMessage* message) override;

protected:
  /** Hook: makes the widget when the view is attached. */
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
  /** Records what `draw` draws; if it throws, what it drew until then. */
  BPicture Recorded(const std::function<void()>& draw);

  BRect fFrame;
  /** The frame last set by a call and the parent's size at that time: the base for following the parent. */
  BRect fSetFrame;
  BPoint fSetParentSize;
  uint32 fResizingMode;
  uint32 fFlags;
  int32 fHideLevel = 0;
  bool fHasFocus = false;
  rgb_color fViewColor{0, 0, 0, 0}; // alpha 0: the desktop's default colour
  rgb_color fHighColor{0, 0, 0, 255};
  rgb_color fLowColor{255, 255, 255, 255};
  BFont fFont;
  std::string fToolTip;
  std::string fAccessibleName;
  std::string fAccessibleDescription;
  std::optional<accessible_role> fAccessibleRole; // else the widget's own
  BPicture* fRecording = nullptr;
  BWindow* fWindow = nullptr;
  BView* fParent = nullptr;
  std::vector<BView*> fChildren;
  std::shared_ptr<display::ViewPeer> fPeer;
};
