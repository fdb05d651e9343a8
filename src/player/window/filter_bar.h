#pragma once

#include <QLineEdit>
#include <QTimer>

class TSongListView;

/** The field above the playlist that filters it while it is typed in. Escape empties and hides it; the arrow keys go to
    the list, and Return plays the song chosen there. Display thread. */
class TFilterBar : public QLineEdit {
public:
  explicit TFilterBar(TSongListView* list);
  void Open();

protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

private:
  void ShowTexts();
  void Apply();
  void Close();

  TSongListView* const fList;
  QTimer fDelay;
};
