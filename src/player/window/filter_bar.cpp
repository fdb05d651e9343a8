#include "player/window/filter_bar.h"

#include "player/list/song_list_view.h"
#include "player/widgets/shown_text.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace {

bool is_for_list(int key) {
  return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

bool is_return(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

TFilterBar::TFilterBar(TSongListView* list) : fList(list) {
  constexpr int kLongest = 200;
  setMaxLength(kLongest);
  setClearButtonEnabled(true);
  ShowTexts();
  fDelay.setSingleShot(true);
  fDelay.setInterval(0);
  connect(this, &QLineEdit::textChanged, this, [this] { fDelay.start(); });
  connect(&fDelay, &QTimer::timeout, this, &TFilterBar::Apply);
}

/** Keys typed in quick succession are coalesced: with ten thousand songs each would keep the window from answering. */
void TFilterBar::Apply() {
  fDelay.stop();
  fList->SetFilter(text());
}

void TFilterBar::ShowTexts() {
  setPlaceholderText(shown_text("Player_Filter_Hint"));
  setAccessibleName(plain_text("Player_Filter"));
}

void TFilterBar::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LanguageChange) ShowTexts();
  QLineEdit::changeEvent(event);
}

void TFilterBar::Open() {
  show();
  setFocus(Qt::ShortcutFocusReason);
  selectAll();
}

void TFilterBar::Close() {
  clear();
  Apply();
  hide();
  fList->setFocus();
}

/** Keys without Control or Alt are the field's, not the window's shortcuts. */
bool TFilterBar::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (!(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) event->accept();
  }
  return QLineEdit::event(event);
}

void TFilterBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return Close();
  const bool isReturn = is_return(event->key());
  if (fDelay.isActive() && (isReturn || is_for_list(event->key()))) Apply();
  if (isReturn) return fList->PlayCurrent();
  if (is_for_list(event->key())) {
    QCoreApplication::sendEvent(fList, event);
    return;
  }
  QLineEdit::keyPressEvent(event);
}
