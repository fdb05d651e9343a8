#pragma once

#include "platform/support/types.h"

/** What the player and a general plug-in know of each other. A plug-in is an image `gen_*.so` in the player's plug-in
    folder that exports the function below under its plain name. */

/** Handed to the plug-in's constructor. */
struct PluginConstructorStruct {
  /** The player sets 0; the plug-in sets 1 once it has been built. */
  int32 built = 0;
};

/** One loaded plug-in. The player makes every call, the destructor's included, on one thread of its own. None of them
    waits for the user: windows open and close later, on threads of the plug-in. */
class GeneralPlugin {
public:
  GeneralPlugin() = default;
  GeneralPlugin(const GeneralPlugin&) = delete;
  GeneralPlugin& operator=(const GeneralPlugin&) = delete;
  /** After `Cleanup`. Every looper of the plug-in has ended when it returns, so that the image can be unloaded. */
  virtual ~GeneralPlugin() = default;

  /** After construction: show what there is to show. Later whenever the user asks for the plug-in. */
  virtual bool Init() = 0;
  /** Once, before destruction: close the windows. */
  virtual void Cleanup() = 0;
  /** Opens the About or the preferences window; `query` only asks whether there is one. */
  virtual bool About(bool query) = 0;
  virtual bool Prefs(bool query) = 0;
  virtual uint32 GetFlags() = 0;

  /** Heap texts (array allocation), owned by the plug-in and read by the player. */
  char* fName = nullptr;
  char* fInfo = nullptr;
  int32 fReserved = 0;
  bool fReservedFlag = false;
};

/** Null or an exception when the plug-in cannot be built. The player owns the result. */
extern "C" GeneralPlugin* NewPlugin(PluginConstructorStruct* record);
