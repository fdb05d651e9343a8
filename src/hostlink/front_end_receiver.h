#pragma once

#include "hostlink/host_protocol.h"
#include "platform/app/looper.h"

#include <atomic>
#include <functional>

/** The mailbox of the link: receives the player's answers. Its own thread stores them, others read them under `Lock`,
    which is the record's, not the looper's. */
class SNFE_Receiver : public BLooper {
public:
  SNFE_Receiver();
  ~SNFE_Receiver() override;

  /** First contact: launches the player where that is wanted, and asks for the private messenger. Any thread. */
  void StartSonivo();
  /** Sends a request to the player, repeating the handshake when the player went away; dropped while there is no
      connection. Waits for room in the player's queue until `StopWaiting`. Any thread. */
  void SendMsg(const BMessage* message);
  /** The same without waiting; false when there was no room. */
  bool TrySendMsg(const BMessage* message);
  /** Lets every send give up, now and from now on. Any thread. */
  void StopWaiting() { fStopWaiting = true; }
  void MessageReceived(BMessage* message) override;

  status_t Lock() const;
  void Unlock() const;
  bool IsReady() const { return fLock >= 0; }
  bool HasArrived() const { return fArrived; }
  /** Copies the record and clears the mark, both under the lock. */
  void TakeInformation(THostInformation* information);
  void SetLaunchHost(bool launch) { fLaunchHost = launch; }

private:
  void StoreInformation(const BMessage& message);
  void StoreMessenger(const BMessage& message);
  void LaunchIfWanted();
  using TSend = std::function<status_t(const BMessenger&, const BMessage&)>;
  status_t SendWaiting(const BMessenger& host, const BMessage& message);
  status_t Deliver(const BMessage& message, const TSend& send);
  status_t Handshake(const TSend& send);
  /** The private messenger when it can be used, else an invalid one. */
  BMessenger Host();

  // Guarded by the semaphore.
  BMessenger fHost;
  THostInformation fInformation;
  bool fConnected = false;

  sem_id fLock;
  std::atomic<bool> fStopWaiting{false};
  std::atomic<bool> fArrived{false};
  std::atomic<bool> fLaunchHost{false};
  std::atomic<bool> fHostRunning{false};
};
