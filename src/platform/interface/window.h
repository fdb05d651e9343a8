#pragma once

#include "platform/app/looper.h"
#include "platform/interface/interface_defs.h"
#include "platform/support/geometry.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class BMenuBar;
class BView;
namespace display {
class WindowPeer;
}

enum window_look { B_TITLED_WINDOW_LOOK, B_DOCUMENT_WINDOW_LOOK, B_FLOATING_WINDOW_LOOK, B_MODAL_WINDOW_LOOK };
enum window_feel { B_NORMAL_WINDOW_FEEL, B_FLOATING_ALL_WINDOW_FEEL };
/** Window flags. */
enum : uint32 { B_NOT_RESIZABLE = 0x1, B_NOT_ZOOMABLE = 0x2, B_NOT_MINIMIZABLE = 0x4 };

/** A window as every thread may see it, without its lock and so also while the window asks its user something. A small
    value; safe when the window is gone. */
class BWindowProxy {
public:
  BWindowProxy() = default;

  /** As the display last reported; false when the window is gone. */
  bool GetFrame(BRect* frame) const;
  /** Brings it to the front. */
  void Activate() const;

private:
  friend class BWindow;
  explicit BWindowProxy(std::weak_ptr<display::WindowPeer> peer) : fPeer(std::move(peer)) {}

  std::weak_ptr<display::WindowPeer> fPeer;
};

/** A window: a looper that owns its views. Made hidden; the first Show starts its thread. The close button of its frame
    posts B_QUIT_REQUESTED. Calls on the window's thread or with the window locked. */
class BWindow : public BLooper {
public:
  BWindow(BRect frame, const char* title, window_look look = B_TITLED_WINDOW_LOOK,
          window_feel feel = B_NORMAL_WINDOW_FEEL, uint32 flags = 0);
  ~BWindow() override;

  virtual void Show();
  virtual void Hide();
  bool IsHidden() const;
  /** Shows of the window leave the keyboard where it is. */
  void SetAvoidsFocus(bool avoids) { fAvoidsFocus = avoids; }
  /** Off: Show starts no thread, the window's messages are delivered by hand (tests). */
  void SetRunsOnShow(bool runs) { fRunsOnShow = runs; }
  void Activate(bool active = true);
  /** Stays above the other window from now on, and hands the keyboard back to it when it hides. */
  void StandInFrontOf(const BWindowProxy& other);
  BWindowProxy Proxy() const { return BWindowProxy(fPeer); }
  bool IsActive() const { return fIsActive; }

  /** The inside of the window, on the screen, as the display last told. */
  BRect Frame() const;
  BRect Bounds() const;
  void MoveTo(BPoint leftTop);
  void MoveTo(float x, float y) { MoveTo(BPoint{x, y}); }
  /** In FrameMoved: where the last MoveTo has left the window, which a window manager may have kept from going all the
      way; none while the display is still at it. */
  std::optional<BPoint> MoveEnd() const { return fMoveEnd; }
  void ResizeTo(float width, float height);
  void SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
  void SetTitle(const char* title);
  const std::string& Title() const { return fTitle; }
  void SetFeel(window_feel feel);
  /** A bit for each workspace of the desktop that it is on. Waits for the display. */
  uint32 Workspaces() const;

  void AddChild(BView* child);
  bool RemoveChild(BView* child);
  int32 CountChildren() const { return static_cast<int32>(fChildren.size()); }
  BView* ChildAt(int32 index) const;
  BView* FindView(const char* name) const;
  BView* CurrentFocus() const { return fFocus; }
  /** From now on closing only puts the window away, until its owner ends it. It agrees with whoever asks whether it
      would close. */
  void KeepWhenClosed(bool keep = true) { fIsKept = keep; }
  /** Hook: a window that is kept was closed; the base hides it. */
  virtual void PutAway();
  void DispatchMessage(BMessage* message, BHandler* handler) override;
  void MessageReceived(BMessage* message) override;

  /** Hooks, on the window's thread. */
  virtual void FrameMoved(BPoint leftTop);
  virtual void FrameResized(float width, float height);
  virtual void WindowActivated(bool active);

  display::WindowPeer* Peer() const { return fPeer.get(); }
  /** For assertions: the caller may use the window's views, because it is the window's thread, has locked the window,
     or no thread runs it. */
  bool IsCallAllowed() const { return Thread() <= 0 || IsLocked(); }

protected:
  /** For windows whose frame the display makes otherwise (file panels). */
  using PeerMaker = std::function<std::shared_ptr<display::WindowPeer>(const BMessenger& window)>;
  BWindow(BRect frame, const char* title, const PeerMaker& makePeer);

private:
  friend class BView;
  friend class BMenuBar;
  void Moved(BHandler* handler, BMessage* message);
  void Resized(BHandler* handler, BMessage* message);
  void Activated(const BMessage& message);
  void CloseAsked(BMessage* message, BHandler* handler);
  void KeyPressed(BMessage* message, BHandler* handler);
  void FocusChanged(BView* view, bool focused);
  void Forget(BView* view);
  void LayOut(BPoint size);
  BPoint LayoutSize() const { return fSize; }

  std::string fTitle;
  /** The size that the views were last laid out for. */
  BPoint fSize;
  std::optional<BPoint> fMoveEnd;
  int32 fHideLevel = 1;
  bool fRunsOnShow = true;
  bool fAvoidsFocus = false;
  bool fIsActive = false;
  bool fIsKept = false;
  std::vector<BView*> fChildren;
  BView* fFocus = nullptr;
  BMenuBar* fKeyMenuBar = nullptr; // whose shortcuts work in the window: the first one attached
  std::shared_ptr<display::WindowPeer> fPeer;
};
