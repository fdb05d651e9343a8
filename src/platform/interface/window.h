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

/** Thread-safe reference to a window that needs no lock, so it also works while the window waits in a question. A small
    value; safe to use after the window is gone. */
class BWindowProxy {
public:
  BWindowProxy() = default;

  /** As last reported by the display; false when the window is gone. */
  bool GetFrame(BRect* frame) const;
  /** Brings it to the front. */
  void Activate() const;

private:
  friend class BWindow;
  explicit BWindowProxy(std::weak_ptr<display::WindowPeer> peer) : fPeer(std::move(peer)) {}

  std::weak_ptr<display::WindowPeer> fPeer;
};

/** A window: a looper that owns its views. Created hidden; the first Show starts its thread. Its close button posts
    B_QUIT_REQUESTED. All calls need the window's thread or lock. */
class BWindow : public BLooper {
public:
  BWindow(BRect frame, const char* title, window_look look = B_TITLED_WINDOW_LOOK,
          window_feel feel = B_NORMAL_WINDOW_FEEL, uint32 flags = 0);
  ~BWindow() override;

  virtual void Show();
  virtual void Hide();
  bool IsHidden() const;
  /** Show does not take the keyboard focus. */
  void SetAvoidsFocus(bool avoids) { fAvoidsFocus = avoids; }
  /** Off: Show starts no thread; tests deliver the messages by hand. */
  void SetRunsOnShow(bool runs) { fRunsOnShow = runs; }
  void Activate(bool active = true);
  /** Stays above the other window from now on, and activates it when hidden. */
  void StandInFrontOf(const BWindowProxy& other);
  BWindowProxy Proxy() const { return BWindowProxy(fPeer); }
  bool IsActive() const { return fIsActive; }

  /** The client area in screen coordinates, as last reported by the display. */
  BRect Frame() const;
  BRect Bounds() const;
  void MoveTo(BPoint leftTop);
  void MoveTo(float x, float y) { MoveTo(BPoint{x, y}); }
  /** For FrameMoved: where the last MoveTo actually put the window (a window manager may restrict it); none while it is
      in progress. */
  std::optional<BPoint> MoveEnd() const { return fMoveEnd; }
  void ResizeTo(float width, float height);
  void SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
  void SetTitle(const char* title);
  const std::string& Title() const { return fTitle; }
  void SetFeel(window_feel feel);
  /** A bit for each workspace that the window is on. Blocks on the display thread. */
  uint32 Workspaces() const;

  void AddChild(BView* child);
  bool RemoveChild(BView* child);
  int32 CountChildren() const { return static_cast<int32>(fChildren.size()); }
  BView* ChildAt(int32 index) const;
  BView* FindView(const char* name) const;
  BView* CurrentFocus() const { return fFocus; }
  /** Closing only calls PutAway; the owner calls Quit. B_QUIT_REQUESTED is answered with "result" true. */
  void KeepWhenClosed(bool keep = true) { fIsKept = keep; }
  /** Hook: a kept window was closed; the base hides it. */
  virtual void PutAway();
  void DispatchMessage(BMessage* message, BHandler* handler) override;
  void MessageReceived(BMessage* message) override;

  /** Hooks, on the window's thread. */
  virtual void FrameMoved(BPoint leftTop);
  virtual void FrameResized(float width, float height);
  virtual void WindowActivated(bool active);

  display::WindowPeer* Peer() const { return fPeer.get(); }

protected:
  /** For windows with a widget of another kind (file panels). */
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
  /** The size for which the views were last laid out. */
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
