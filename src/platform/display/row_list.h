#pragma once

#include "platform/display/row_model.h"

#include <QListView>

namespace display {

/** A list that shows pictures made elsewhere. It selects nothing by itself: clicks are told to the view, whose answer
    selects. Asks for the pictures it lacks, all at once, and again only when they have come. */
class RowList : public QListView {
public:
  explicit RowList(const BMessenger& view);

  void SetRows(const RowLayout& layout, int firstChanged);
  void SetPictures(const std::vector<std::pair<int32, BPicture>>& pictures);
  void SelectRow(int row);
  void ScrollToRow(int row);
  void InvalidateRows(int first, int last);

protected:
  void paintEvent(QPaintEvent* event) override;
  /** Keys are the program's; what it hands back means nothing here. */
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
  /** First and last row on the screen; last is less than first when there are none. */
  std::pair<int, int> RowsOnScreen() const;
  void AskForPictures();
  void AskSoon();
  void TellRow(uint32 code, const QPoint& where);

  RowModel fModel;
  BMessenger fView;
  bool fAsked = false;
  bool fWillAsk = false;
  int fRowTold = -1;
};

} // namespace display
