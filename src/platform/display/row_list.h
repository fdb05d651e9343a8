#pragma once

#include "platform/display/row_model.h"

#include <QElapsedTimer>
#include <QListView>

class QShortcut;

namespace display {

/** A list that shows the pictures recorded by its view. Clicks are reported to the view, which does the selecting.
    Missing pictures are requested in one batch, the next only after it was answered. */
class RowList : public QListView {
public:
  RowList(const BMessenger& view, bool selectsSeveral);

  void SetRows(const RowLayout& layout, int firstChanged);
  void SetPictures(const std::vector<std::pair<int32, BPicture>>& pictures);
  void SelectRows(const row_selection& rows);
  void ScrollToRow(int row);
  void KeepInSight(int row);
  void InvalidateRows(int first, int last);
  void SetShortcuts(const std::vector<ListShortcut>& shortcuts);
  void ReportReleases(bool reports) { fReportsReleases = reports; }
  /** Shown in the room below the first row; empty for none. */
  void SetPlaceholder(const QString& text, const QColor& color);

protected:
  /** Notes which key was pressed when: it may be a shortcut's. */
  bool event(QEvent* event) override;
  /** A row whose text does not fit shows it in its tooltip. */
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  /** The view handles all keys; those it returns have no meaning here. */
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
  /** First and last visible row; last < first when there are none. */
  std::pair<int, int> RowsOnScreen() const;
  void AskForPictures();
  void AskSoon();
  void ReportRow(uint32 code, const QMouseEvent& event);

  RowModel fModel;
  std::vector<QShortcut*> fShortcuts;
  QString fPlaceholder;
  QColor fPlaceholderColor;
  QElapsedTimer fScrolled; // since the user scrolled; invalid before
  BMessenger fView;
  bool fAsked = false; // until the pictures come
  bool fWillAsk = false;
  bool fReportsReleases = false;
  bigtime_t fKeyUs = 0; // fKeyUs and fScanCode: of the last key press
  uint32 fScanCode = 0;
  int fReportedRow = -1; // of the current drag
};

} // namespace display
