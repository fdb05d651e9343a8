#pragma once

#include "platform/app/looper.h"
#include "plugin/host_protocol.h"

#include <atomic>

/** Receives the player's answers. Its own thread stores them, others read them under
    `LockData`. The mailbox of the link. */
class SNFE_Receiver : public BLooper {
public:
  SNFE_Receiver();
  ~SNFE_Receiver() override;

  /** First contact: launches the player where that is wanted, and asks for the private messenger. Any thread. */
  void StartSonivo();
  /** Sends a request to the player, repeating the handshake when the player went away; dropped while there is no
      connection, and while a player that hangs has no room for more. Any thread, one at a time. */
  void SendMsg(const BMessage* message);
  void MessageReceived(BMessage* message) override;

  status_t LockData() const;
  void UnlockData() const;
  bool IsReady() const { return fLock >= 0; }
  bool HasArrived() const { return fArrived; }
  /** Copies the record and clears the mark, both under the lock. */
  void TakeInformation(THostInformation* information);
  void SetLaunchHost(bool launch) { fLaunchHost = launch; }

private:
  void StoreInformation(const BMessage& message);
  void StoreMessenger(const BMessage& message);
  void LaunchIfWanted();
  bool Handshake();
  /** The private messenger when it can be used, else an invalid one. */
  BMessenger Host();

  // Guarded by the semaphore.
  BMessenger fHost;
  THostInformation fInformation;
  bool fConnected = false;

  sem_id fLock;
  std::atomic<bool> fArrived{false};
  std::atomic<bool> fLaunchHost{false};
  std::atomic<bool> fHostRunning{false};
};
