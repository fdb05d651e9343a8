#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct _XDisplay;

/** A window of another program on the X display: finds it, sends real key events, takes screenshots. Not thread-safe.
    Throws std::runtime_error without a display. */
class TXWindow {
public:
  /** Waits for a visible window whose title contains `titlePart`. */
  TXWindow(const std::string& titlePart, double timeoutSec);

  void Focus();
  /** Presses and releases the named key ("space", "Home") with the named modifier or none; returns when it was
      pressed (monotonic, µs). */
  int64_t Press(const char* key, const char* modifier = nullptr);
  /** Only one half of it, for a key that is held. */
  int64_t PressDown(const char* key);
  int64_t Release(const char* key);
  /** The window draws everything again in another size, of which there are two. */
  void Resize();
  std::string Title() const;
  /** Requests closing, like the close button. */
  void Close();
  /** Sets the colour (RGB) of the root window. */
  void PaintBackground(unsigned long colour);
  /** Saves a screenshot. */
  [[nodiscard]] bool SaveScreen(const std::string& path) const;

private:
  struct TDisplayEnd {
    void operator()(_XDisplay* display) const;
  };
  unsigned long Find(unsigned long parent, const std::string& titlePart) const;
  std::string TitleOf(unsigned long window) const;
  void Send(const char* key, bool down);
  int64_t SendNow(const char* key, bool down);

  std::unique_ptr<_XDisplay, TDisplayEnd> fDisplay;
  unsigned long fWindow = 0;
  bool fIsSmaller = false;
};
