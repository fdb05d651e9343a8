#pragma once

#include "platform/app/messenger.h"

#include <QSocketNotifier>

/** Handles the first SIGTERM, SIGINT or SIGHUP like closing the player's window: the windows are asked, and nothing
    unsaved is lost. A second signal of the same kind ends the program at once. Only one object at a time, on the
    display thread. */
class TEndSignals : public QSocketNotifier {
public:
  TEndSignals(const BMessenger& player, QObject* parent);
  ~TEndSignals() override;
};
