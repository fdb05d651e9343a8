#pragma once

#include "platform/app/messenger.h"
#include "platform/interface/window.h"
#include "platform/support/geometry.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

class QWidget;

namespace display {

/** How a window begins. */
struct WindowSetup {
  BRect frame;
  std::string title;
  window_look look = B_TITLED_WINDOW_LOOK;
  window_feel feel = B_NORMAL_WINDOW_FEEL;
  uint32 flags = 0;
};

/** Where the window is, for both sides of the border; the lock guards every field. */
struct WindowPlace {
  std::mutex lock;
  BRect frame;
  /** Moves that the program has asked for, those of them that the display has completed, and where the last of these
      left the window: not always where it was sent, since a window manager may keep it on the screen. */
  int64 movesAsked = 0;
  int64 movesDone = 0;
  BPoint moveEnd;
};

/** A move as it is told to the window. */
struct WindowMove {
  BPoint leftTop;
  /** Where the moves asked for by the program ended; none while one of them is under way. */
  std::optional<BPoint> end;
};

/** The window could become active or cease to be. */
enum : uint32 { DISPLAY_WINDOW_ACTIVATED = '_WAC' }; // bool "active"

/** The program's hand on one window of the display; as ViewPeer is for views. */
class WindowPeer {
public:
  /** `make` makes another kind of window than the plain one. */
  WindowPeer(const BMessenger& window, const WindowSetup& setup, std::function<QWidget*()> make = nullptr);
  WindowPeer(const WindowPeer&) = delete;
  WindowPeer& operator=(const WindowPeer&) = delete;
  virtual ~WindowPeer();

  void Show(bool takesFocus);
  void Hide();
  void Activate(bool active);
  void StandInFrontOf(const WindowPeer& other);
  void MoveTo(BPoint leftTop);
  void ResizeTo(BPoint size);
  void SetSizeLimits(BPoint smallest, BPoint largest);
  void SetTitle(const std::string& title);
  void SetFeel(window_feel feel);

  BRect Frame() const;
  /** Waits for the display. */
  uint32 Workspaces() const;
  /** Where the window is now, and where the moves that the program has asked for ended. */
  WindowMove Move() const;

  /** Puts a control into the window; the function runs on the display thread. */
  std::function<void(QWidget*)> Taker() const;
  /** The window of the peer that a question asked by this thread stands in front of. Display thread. */
  std::function<QWidget*()> Finder() const;

protected:
  void Change(std::function<void(QWidget*)> change) const;

private:
  struct Slot;
  std::shared_ptr<Slot> fSlot;
  std::shared_ptr<WindowPlace> fPlace;
};

} // namespace display
