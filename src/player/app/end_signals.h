#pragma once

#include "platform/app/messenger.h"

#include <QSocketNotifier>

/** Makes of the first request by signal to end (SIGTERM, SIGINT, SIGHUP) what closing the player's window is: the
    windows are asked, and nothing unsaved is lost. The second of a kind ends the program at once. One object, on the
    display thread. */
class TEndSignals : public QSocketNotifier {
public:
  TEndSignals(const BMessenger& player, QObject* parent);
  ~TEndSignals() override;
};
