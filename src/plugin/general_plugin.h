#pragma once

#include "platform/support/types.h"

/** The interface between the player and its general plug-ins. A plug-in is an image `gen_*.so` in the player's plug-in
    folder that exports `NewPlugin` with C linkage. */

/** Passed to the plug-in's constructor. */
struct PluginConstructorStruct {
  /** 0 from the player; the plug-in sets 1 after its construction. */
  int32 built = 0;
};

/** A loaded plug-in. The player makes all calls, including the destructor, on one thread, which is not used for
    anything else. No call waits for the user: windows open and close later, on threads of the plug-in. */
class GeneralPlugin {
public:
  GeneralPlugin() = default;
  GeneralPlugin(const GeneralPlugin&) = delete;
  GeneralPlugin& operator=(const GeneralPlugin&) = delete;
  /** Called after `Cleanup`. On return all loopers of the plug-in have ended, so that the image can be unloaded. */
  virtual ~GeneralPlugin() = default;

  /** Opens the plug-in's window: after construction, and later whenever the user requests it. */
  virtual bool Init() = 0;
  /** Closes the windows. Called once, before destruction. */
  virtual void Cleanup() = 0;
  /** Opens the About or the preferences window; `query` only asks whether one exists. */
  virtual bool About(bool query) = 0;
  virtual bool Prefs(bool query) = 0;
  virtual uint32 GetFlags() = 0;

  /** Heap texts (array new), owned by the plug-in and read by the player. */
  char* fName = nullptr;
  char* fInfo = nullptr;
  int32 fReserved = 0;
  bool fReservedFlag = false;
};

/** Returns null or throws if the plug-in cannot be constructed. The player owns the result. */
extern "C" GeneralPlugin* NewPlugin(PluginConstructorStruct* record);
