#pragma once

#include "platform/support/types.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

/** What the player asks of a plug-in. */
enum class TPluginCall { kLoad, kShow, kPrefs, kAbout, kEnd };

/** One plug-in, and the thread that makes every call into it, the first to the last: one that hangs holds up neither
    the player nor another plug-in. Called by one thread. */
class TPluginThread {
public:
  /** `answered` is called on the plug-in's thread after each call; it must not wait. */
  TPluginThread(const std::string& fileName, std::function<void()> answered);
  TPluginThread(const TPluginThread&) = delete;
  TPluginThread& operator=(const TPluginThread&) = delete;
  /** Drops the calls that were not begun. A thread that hangs in the plug-in is left behind. */
  ~TPluginThread();

  /** Loads the image and builds the plug-in. */
  void Load(const std::string& path);
  /** Queued after the calls before it; those to a plug-in that was not built do nothing. */
  void Make(TPluginCall call);

  struct TState {
    bool isBusy = false;             // calls are waiting or in progress
    std::optional<TPluginCall> call; // in progress
    bigtime_t sinceUs = 0;           // when that began
    bool isBuilt = false;
    bool hasEnded = false;
    /** What to call it, and what it says of itself: its own texts, else its file's name. */
    std::string name;
    std::string info;
    /** How its calls failed, since this was last asked. */
    std::vector<std::string> failures;
  };
  TState TakeState();

private:
  struct TInside;
  static void Run(const std::shared_ptr<TInside>& inside);
  const std::shared_ptr<TInside> fInside; // outlives this object while a call hangs
  std::thread fThread;
};
