#include "platform/interface/viewer_input.h"

#include "platform/app/message.h"
#include "platform/display/convert.h"
#include "platform/display/display_thread.h"
#include "platform/interface/window.h"
#include "platform/interface/window_peer.h"

#include <QCursor>
#include <QMenu>
#include <QShortcut>
#include <QWheelEvent>
#include <QWidget>

namespace display {

namespace {

constexpr QLatin1String kName("viewer input");
constexpr int kWheelStep = 120;

/** The window's child; filters the events that its views leave to it. */
class ViewerInput : public QObject {
public:
  ViewerInput(QWidget* widget, BMessenger window, const ViewerCodes& codes)
      : QObject(widget), fWidget(widget), fWindow(std::move(window)), fCodes(codes) {
    setObjectName(kName);
    widget->installEventFilter(this);
    const auto add = [this](const QKeySequence& key, auto action) {
      connect(new QShortcut(key, fWidget), &QShortcut::activated, this, action);
    };
    add(Qt::Key_F11, [this] { SetFullScreen(!fWidget->isFullScreen()); });
    add(Qt::Key_Escape, [this] { SetFullScreen(false); });
    for (const auto key : {Qt::Key_Plus, Qt::Key_Equal}) add(Qt::CTRL | key, [this] { Zoom(1); });
    add(Qt::CTRL | Qt::Key_Minus, [this] { Zoom(-1); });
    add(Qt::CTRL | Qt::Key_0, [this] { Zoom(0); });
  }

  void SetFullScreen(bool on) {
    if (on == fWidget->isFullScreen()) return;
    BMessage message(fCodes.fullScreen);
    const QRect frame = fWidget->normalGeometry();
    if (on)
      message.AddRect("frame", {float(frame.left()), float(frame.top()), float(frame.right()), float(frame.bottom())});
    Send(message);
    fWidget->setWindowState(fWidget->windowState() ^ Qt::WindowFullScreen);
  }

  void Zoom(int32 by) {
    BMessage message(fCodes.zoom);
    message.AddInt32("By", by);
    Send(message);
  }

  void ShowMenu(const ViewerMenuTexts& texts) {
    auto* const menu = new QMenu(fWidget);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const std::string& text, const QKeySequence& key, auto action) {
      return menu->addAction(to_qstring(text) + '\t' + key.toString(QKeySequence::NativeText), this, action);
    };
    QAction* const fullScreen = add(texts.fullScreen, Qt::Key_F11, [this] { SetFullScreen(!fWidget->isFullScreen()); });
    fullScreen->setCheckable(true);
    fullScreen->setChecked(fWidget->isFullScreen());
    menu->addSeparator();
    add(texts.larger, Qt::CTRL | Qt::Key_Plus, [this] { Zoom(1); });
    add(texts.smaller, Qt::CTRL | Qt::Key_Minus, [this] { Zoom(-1); });
    add(texts.normalSize, Qt::CTRL | Qt::Key_0, [this] { Zoom(0); });
    menu->popup(QCursor::pos());
  }

protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
    case QEvent::MouseButtonDblClick:
      SetFullScreen(!fWidget->isFullScreen());
      return true;
    case QEvent::ContextMenu:
      Send(BMessage(fCodes.menu));
      return true;
    case QEvent::Wheel:
      return Wheel(*static_cast<QWheelEvent*>(event));
    default:
      return QObject::eventFilter(watched, event);
    }
  }

private:
  /** Small steps of touch pads add up. */
  bool Wheel(const QWheelEvent& event) {
    if (!(event.modifiers() & Qt::ControlModifier)) return false;
    fTurned += event.angleDelta().y();
    if (const int steps = fTurned / kWheelStep; steps != 0) {
      fTurned -= steps * kWheelStep;
      Zoom(steps);
    }
    return true;
  }

  void Send(const BMessage& message) const { fWindow.SendMessage(&message, BMessenger(), 0); }

  QWidget* const fWidget;
  const BMessenger fWindow;
  const ViewerCodes fCodes;
  int fTurned = 0;
};

} // namespace

void add_viewer_input(BWindow* window, const ViewerCodes& codes) {
  post([find = window->Peer()->Finder(), address = BMessenger(window), codes] {
    if (QWidget* const widget = find()) new ViewerInput(widget, address, codes);
  });
}

void show_viewer_menu(BWindow* window, const ViewerMenuTexts& texts) {
  post([find = window->Peer()->Finder(), texts] {
    QWidget* const widget = find();
    QObject* const input = widget ? widget->findChild<QObject*>(kName, Qt::FindDirectChildrenOnly) : nullptr;
    if (input) static_cast<ViewerInput*>(input)->ShowMenu(texts);
  });
}

} // namespace display
