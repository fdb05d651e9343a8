#include "demo/x_window.h"

#include "demo/sink_recorder.h"

#include <QImage>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <unistd.h>

#include <span>
#include <stdexcept>

namespace {

constexpr useconds_t kKeyHeldUs = 40'000;

/** Ignores errors: windows of other programs may disappear while the tree is walked. */
int ignore_error(Display*, XErrorEvent*) {
  return 0;
}

} // namespace

void TXWindow::TDisplayEnd::operator()(_XDisplay* display) const {
  XCloseDisplay(display);
}

TXWindow::TXWindow(const std::string& titlePart, double timeoutSec) : fDisplay(XOpenDisplay(nullptr)) {
  if (!fDisplay) throw std::runtime_error("no X display");
  XSetErrorHandler(ignore_error);
  const int64_t deadline = clock_us() + static_cast<int64_t>(timeoutSec * 1e6);
  while (fWindow == 0 && clock_us() < deadline) {
    fWindow = Find(DefaultRootWindow(fDisplay.get()), titlePart);
    if (fWindow == 0) usleep(20'000);
  }
  if (fWindow == 0) throw std::runtime_error("no window titled \"" + titlePart + "\" came up");
}

std::string TXWindow::TitleOf(unsigned long window) const {
  Display* display = fDisplay.get();
  Atom type = 0;
  int format = 0;
  unsigned long itemCount = 0, bytesLeft = 0;
  unsigned char* value = nullptr;
  XGetWindowProperty(display, window, XInternAtom(display, "_NET_WM_NAME", False), 0, 256, False,
                     XInternAtom(display, "UTF8_STRING", False), &type, &format, &itemCount, &bytesLeft, &value);
  std::string title = value ? std::string(reinterpret_cast<const char*>(value), itemCount) : std::string();
  if (value) XFree(value);
  return title;
}

std::string TXWindow::Title() const {
  return TitleOf(fWindow);
}

unsigned long TXWindow::Find(unsigned long parent, const std::string& titlePart) const {
  Window root = 0, above = 0, *children = nullptr, found = 0;
  unsigned int count = 0;
  if (!XQueryTree(fDisplay.get(), parent, &root, &above, &children, &count)) return 0;
  for (const Window child : std::span(children, count)) {
    XWindowAttributes attributes{};
    if (!XGetWindowAttributes(fDisplay.get(), child, &attributes) || attributes.map_state != IsViewable) continue;
    found = TitleOf(child).find(titlePart) != std::string::npos ? child : Find(child, titlePart);
    if (found) break;
  }
  if (children) XFree(children);
  return found;
}

void TXWindow::Focus() {
  XRaiseWindow(fDisplay.get(), fWindow);
  XSetInputFocus(fDisplay.get(), fWindow, RevertToParent, CurrentTime);
  XSync(fDisplay.get(), False);
}

void TXWindow::Send(const char* key, bool down) {
  const KeyCode code = XKeysymToKeycode(fDisplay.get(), XStringToKeysym(key));
  XTestFakeKeyEvent(fDisplay.get(), code, down, CurrentTime);
}

int64_t TXWindow::SendNow(const char* key, bool down) {
  const int64_t sentUs = clock_us();
  Send(key, down);
  XFlush(fDisplay.get());
  return sentUs;
}

int64_t TXWindow::PressDown(const char* key) {
  return SendNow(key, true);
}

int64_t TXWindow::Release(const char* key) {
  return SendNow(key, false);
}

int64_t TXWindow::Press(const char* key, const char* modifier) {
  if (modifier) Send(modifier, true);
  const int64_t pressedUs = PressDown(key);
  usleep(kKeyHeldUs);
  Send(key, false);
  if (modifier) Send(modifier, false);
  XFlush(fDisplay.get());
  return pressedUs;
}

void TXWindow::Resize() {
  constexpr unsigned kStep = 8;
  XWindowAttributes now{};
  if (!XGetWindowAttributes(fDisplay.get(), fWindow, &now)) return;
  const unsigned width = static_cast<unsigned>(now.width) + (fIsSmaller ? kStep : -kStep);
  fIsSmaller = !fIsSmaller;
  XResizeWindow(fDisplay.get(), fWindow, width, static_cast<unsigned>(now.height));
  XFlush(fDisplay.get());
}

void TXWindow::Close() {
  XEvent event{};
  event.xclient = {};
  event.xclient.type = ClientMessage;
  event.xclient.window = fWindow;
  event.xclient.message_type = XInternAtom(fDisplay.get(), "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(fDisplay.get(), "WM_DELETE_WINDOW", False));
  XSendEvent(fDisplay.get(), fWindow, False, NoEventMask, &event);
  XSync(fDisplay.get(), False);
}

void TXWindow::PaintBackground(unsigned long colour) {
  XSetWindowBackground(fDisplay.get(), DefaultRootWindow(fDisplay.get()), colour);
  XClearWindow(fDisplay.get(), DefaultRootWindow(fDisplay.get()));
}

bool TXWindow::SaveScreen(const std::string& path) const {
  Display* display = fDisplay.get();
  const int width = DisplayWidth(display, DefaultScreen(display)),
            height = DisplayHeight(display, DefaultScreen(display));
  XImage* screen = XGetImage(display, DefaultRootWindow(display), 0, 0, static_cast<unsigned>(width),
                             static_cast<unsigned>(height), AllPlanes, ZPixmap);
  if (!screen || screen->bits_per_pixel != 32) return false;
  const QImage picture(reinterpret_cast<const uchar*>(screen->data), width, height, screen->bytes_per_line,
                       QImage::Format_RGB32);
  const bool saved = picture.save(QString::fromStdString(path));
  XDestroyImage(screen);
  return saved;
}
