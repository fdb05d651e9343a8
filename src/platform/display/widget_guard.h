#pragma once

#include "platform/interface/view_peer.h"

#include <QObject>

class QKeyEvent;
class QWidget;

namespace display {

/** Event filter on the widget of each view: turns its keys and focus changes into messages to the view, and lays out
    the widgets inside it when it is resized. Owned by the widget (QObject child); display thread. */
class WidgetGuard : public QObject {
public:
  WidgetGuard(QWidget* widget, const BMessenger& view, Keys keys);

  /** The guard of a widget; null for widgets that do not belong to a view. */
  static WidgetGuard* Of(const QWidget* widget);

  const BMessenger& View() const { return fView; }
  void SetPlacement(const Placement& placement);
  void FillParent();
  /** Sets the geometry from the placement and the current size of the parent. */
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

/** Lays out the views' widgets that are direct children of `parent`. */
void place_children(const QWidget* parent);

} // namespace display
