#include "platform/app/message.h"
#include "platform/display/accelerators.h"
#include "platform/display/control_widget.h"
#include "platform/display/convert.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QSlider>
#include <QStyle>

/** Buttons, check boxes, sliders and one-line fields: Qt's own widgets. They report what the user does, not what the
   program sets. */

namespace display {

namespace {

class PushButton : public ReturnClicks<QPushButton>, public ControlWidget {
public:
  explicit PushButton(const BMessenger& view) {
    connect(this, &QPushButton::clicked, this, [view] { view.SendMessage(DISPLAY_CONTROL_WORKED); });
  }
  void ShowLabel(const std::string& label) override { setText(accelerated_label(label)); }
  void ShowValue(int32 isDefault) override { setDefault(isDefault != 0); }
};

class CheckBox : public QCheckBox, public ControlWidget {
public:
  explicit CheckBox(const BMessenger& view) {
    connect(this, &QCheckBox::clicked, this, [view](bool isChecked) { send_value(view, isChecked ? 1 : 0); });
  }
  void ShowLabel(const std::string& label) override { setText(accelerated_label(label)); }
  void ShowValue(int32 value) override { setChecked(value != 0); }
};

class MenuField : public QComboBox, public ControlWidget {
public:
  explicit MenuField(const BMessenger& view) {
    // Reported also when the choice is the current one: it may be one that asks for more.
    connect(this, &QComboBox::activated, this, [view](int index) { send_value(view, index); });
  }
  void ShowChoices(const std::vector<std::string>& choices) override {
    clear();
    for (const std::string& choice : choices) addItem(to_qstring(choice));
    // Recomputes the preferred size. Left at AdjustToContents, the field would later resize itself to it, too.
    setSizeAdjustPolicy(AdjustToContents);
    setSizeAdjustPolicy(AdjustToContentsOnFirstShow);
  }
  void ShowValue(int32 index) override { setCurrentIndex(index >= 0 && index < count() ? index : -1); }
};

class Slider : public QSlider, public ControlWidget {
public:
  explicit Slider(const BMessenger& view) : QSlider(Qt::Horizontal) {
    setRange(0, kSliderSteps);
    setPageStep(kSliderSteps / 20);
    setSingleStep(kSliderSteps / 100);
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QSlider::actionTriggered, this, [this, view](int action) {
      if (action != SliderMove) send_value(view, sliderPosition());
    });
    connect(this, &QSlider::sliderReleased, this, [this, view] { send_value(view, value()); });
  }
  void ShowLabel(const std::string& label) override { setAccessibleName(to_qstring(label)); }
  void ShowValue(int32 value) override {
    if (!isSliderDown()) setValue(value);
  }

protected:
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton) return event->ignore();
    setSliderDown(true);
    MoveTo(*event);
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    if (isSliderDown()) MoveTo(*event);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) setSliderDown(false);
  }

private:
  void MoveTo(const QMouseEvent& event) {
    setSliderPosition(QStyle::sliderValueFromPosition(minimum(), maximum(), event.position().toPoint().x(), width(),
                                                      isRightToLeft()));
  }
};

class TextField : public QLineEdit, public ControlWidget {
public:
  explicit TextField(const BMessenger& view) {
    connect(this, &QLineEdit::textEdited, this, [view](const QString& text) {
      BMessage changed(DISPLAY_FIELD_CHANGED);
      changed.AddString("text", text.toStdString());
      view.SendMessage(&changed, BMessenger(), 0);
    });
  }
  void ShowText(const std::string& text) override { setText(to_qstring(text)); }
  void SelectAll() override { selectAll(); }
  void PlaceCaretAfter(const std::string& start) override {
    setCursorPosition(static_cast<int>(to_qstring(start).size()));
  }
  std::pair<std::string, std::string> TextAroundCaret() const override {
    const int caret = cursorPosition();
    return {text().left(caret).toStdString(), text().mid(caret).toStdString()};
  }
};

template <class Widget>
std::shared_ptr<ControlPeer> make_peer(const BMessenger& view) {
  return std::make_shared<ControlPeer>(view, Keys::to_control, [view]() -> QWidget* { return new Widget(view); });
}

} // namespace

std::shared_ptr<ControlPeer> make_button_peer(const BMessenger& view) {
  return make_peer<PushButton>(view);
}

std::shared_ptr<ControlPeer> make_check_box_peer(const BMessenger& view) {
  return make_peer<CheckBox>(view);
}

std::shared_ptr<ControlPeer> make_menu_field_peer(const BMessenger& view) {
  return make_peer<MenuField>(view);
}

std::shared_ptr<ControlPeer> make_slider_peer(const BMessenger& view) {
  return make_peer<Slider>(view);
}

std::shared_ptr<ControlPeer> make_text_field_peer(const BMessenger& view) {
  return make_peer<TextField>(view);
}

} // namespace display
