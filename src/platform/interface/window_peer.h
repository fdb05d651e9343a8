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

/** Initial state of a window. */
struct WindowSetup {
  BRect frame;
  std::string title;
  window_look look = B_TITLED_WINDOW_LOOK;
  window_feel feel = B_NORMAL_WINDOW_FEEL;
  uint32 flags = 0;
};

/** Position of a window, shared by its thread and the display thread; `lock` guards all fields. */
struct WindowPlace {
  std::mutex lock;
  BRect frame;
  /** Moves requested by the program. */
  int64 movesAsked = 0;
  /** Those of them that the display has completed. */
  int64 movesDone = 0;
  /** Where the last completed one left the window; a window manager may have restricted it. */
  BPoint moveEnd;
};

/** A move as reported to the window. */
struct WindowMove {
  BPoint leftTop;
  /** Where the program's last move ended; none while one is in progress. */
  std::optional<BPoint> end;
};

/** The window was activated or deactivated. */
enum : uint32 { DISPLAY_WINDOW_ACTIVATED = '_WAC' }; // bool "active"

/** Thread-safe handle to one top-level QWidget, as ViewPeer is for views. */
class WindowPeer {
public:
  /** `make` makes a widget of another kind than the plain window. */
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
  /** Blocks on the display thread. */
  uint32 Workspaces() const;
  /** The current position, and where the program's moves ended. */
  WindowMove Move() const;

  /** A function for the display thread that puts a widget into the window. */
  std::function<void(QWidget*)> Taker() const;
  /** A function for the display thread that returns the window's widget; null when it is gone. */
  std::function<QWidget*()> Finder() const;

protected:
  void Change(std::function<void(QWidget*)> change) const;

private:
  struct Slot;
  std::shared_ptr<Slot> fSlot;
  std::shared_ptr<WindowPlace> fPlace;
};

} // namespace display
