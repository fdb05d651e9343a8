#pragma once

#include "hostlink/host_protocol.h"
#include "platform/app/looper.h"

#include <atomic>
#include <functional>

/** The mailbox of the link: its thread receives and stores the player's answers, which other threads read. */
class SNFE_Receiver : public BLooper {
public:
  SNFE_Receiver();
  ~SNFE_Receiver() override;

  /** Launches the player if enabled, and requests its private messenger. Thread-safe. */
  void StartSonivo();
  /** Sends a request to the player, after another handshake if the connection was lost; dropped without a connection.
      Blocks while the player's queue is full, until `StopWaiting`. Thread-safe. */
  void SendMsg(const BMessage* message);
  /** Like `SendMsg` without waiting; false if the queue is full. */
  bool TrySendMsg(const BMessage* message);
  /** Cancels all current and future sends. Thread-safe. */
  void StopWaiting() { fStopWaiting = true; }
  void MessageReceived(BMessage* message) override;

  /** Lock the stored answers, not the looper. Inside, TDataLock is used. */
  status_t Lock() const;
  void Unlock() const;
  bool IsReady() const { return fLock >= 0; }
  bool HasArrived() const { return fArrived; }
  /** Copies the record and resets `HasArrived`, atomically. */
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
  /** The private messenger; invalid before the handshake, and once the player is gone. */
  BMessenger Host();

  // fHost and fInformation are guarded by fLock.
  BMessenger fHost;
  THostInformation fInformation;

  sem_id fLock;
  std::atomic<bool> fStopWaiting{false};
  std::atomic<bool> fArrived{false};
  std::atomic<bool> fLaunchHost{false};
  std::atomic<bool> fHostRunning{false};
};
