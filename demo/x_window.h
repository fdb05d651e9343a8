#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct _XDisplay;

/** A window of another program on the X display: finds it, types into it as a person would, takes the screen's
    picture. One thread. Throws std::runtime_error without a display. */
class TXWindow {
public:
  /** Waits for a visible window whose title contains `titlePart`. */
  TXWindow(const std::string& titlePart, double patienceSec);

  void Focus();
  /** Presses and releases the named key ("space", "Home") with the named modifier or none; returns when it was
      pressed (monotonic, µs). */
  int64_t Press(const char* key, const char* modifier = nullptr);
  std::string Title() const;
  /** Asks the window to close, as its close box does. */
  void Close();
  /** Gives the bare screen behind the windows a colour (RGB). */
  void PaintBackground(unsigned long colour);
  /** Writes the whole screen as a picture file. */
  [[nodiscard]] bool SaveScreen(const std::string& path) const;

private:
  struct TDisplayEnd {
    void operator()(_XDisplay* display) const;
  };
  unsigned long Find(unsigned long parent, const std::string& titlePart) const;
  std::string TitleOf(unsigned long window) const;
  void Send(const char* key, bool down);

  std::unique_ptr<_XDisplay, TDisplayEnd> fDisplay;
  unsigned long fWindow = 0;
};
