#pragma once

#include "platform/interface/view_peer.h"

#include <QObject>

class QKeyEvent;
class QWidget;

namespace display {

/** Sits on the control of each view: turns its keys and focus changes into messages to the view, and places the
    controls inside it when its size changes. A child of its control; display thread. */
class WidgetGuard : public QObject {
public:
  WidgetGuard(QWidget* widget, const BMessenger& view, Keys keys);

  /** The guard of a control; null for widgets that are no view's. */
  static WidgetGuard* Of(const QWidget* widget);

  const BMessenger& View() const { return fView; }
  void SetPlacement(const Placement& placement);
  void FillParent();
  /** Sets the geometry from the placement and the present size of the parent. */
  void Place();
  void HandBack(const KeyPress& key);
  bool eventFilter(QObject* receiver, QEvent* event) override;

private:
  bool SendKey(const QKeyEvent& event);
  void SendFocus(bool focused, bool byTab = false) const;

  QWidget* fWidget;
  BMessenger fView;
  Keys fKeys;
  Placement fPlacement;
  bool fFillsParent = false;
  bool fHandsBack = false;
  int32 fRepeat = 0;
};

/** Places the controls of the views directly inside `parent`. */
void place_children(const QWidget* parent);

} // namespace display
