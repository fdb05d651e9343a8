#pragma once

#include "player/model/player_choices.h"

#include <string>
#include <vector>

struct mpv_handle;
struct mpv_node;

/** The device that the user has chosen for the sound, which may be disconnected and connected again at any time; the
    default device stands in for it meanwhile. Used by the source's thread only, since a sound server that hangs blocks
    the library. */
class TOutputDevice {
public:
  /** `mpv` outlives the last call. */
  void Begin(mpv_handle* mpv) { fMpv = mpv; }
  /** Empty for the default device. */
  void Choose(const std::string& device);
  bool IsChosen() const { return !fDevice.empty(); }
  /** Its description if it is known, else its name in the library. */
  const std::string& Text() const { return fDescription.empty() ? fDevice : fDescription; }

  /** The devices of the sound server, or else of the system. */
  std::vector<TSoundDevice> Devices() const;

  enum class TNews { kNone, kLost, kListed };
  /** The list of devices has changed. Lost: the server plays the sound on another device, or will fail to. Listed: the
      lost device is there again; Retry uses it. */
  TNews ListChanged(const mpv_node& list);
  /** Nothing is heard: uses the default device. True if that means that the chosen one is lost. */
  bool UseDefault();
  /** Opens the lost device if it is listed. False if nothing was done. */
  bool Retry();
  /** True once, when the lost device is in use again. Call it when something is heard. */
  bool TakeReturn();

private:
  enum class TState { kInUse, kLost, kRetried };
  void Set(const std::string& device);

  mpv_handle* fMpv = nullptr;
  std::string fDevice;
  std::string fDescription;
  TState fState = TState::kInUse;
  bool fIsReplaced = false; // by the default device, in the library
};
