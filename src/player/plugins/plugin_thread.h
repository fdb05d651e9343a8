#pragma once

#include "platform/support/types.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

/** The calls into a plug-in. */
enum class TPluginCall { kLoad, kShow, kPrefs, kAbout, kEnd };

/** A plug-in, and the thread that makes all calls into it: a plug-in that hangs blocks neither the player nor another
    plug-in. Used by one thread. */
class TPluginThread {
public:
  /** `answered` is called on the plug-in's thread after each call; it must not block. */
  TPluginThread(const std::string& fileName, std::function<void()> answered);
  TPluginThread(const TPluginThread&) = delete;
  TPluginThread& operator=(const TPluginThread&) = delete;
  /** Drops queued calls. A thread that hangs in the plug-in is detached. */
  ~TPluginThread();

  /** Loads the image and builds the plug-in. */
  void Load(const std::string& path);
  /** Queues a call; calls into a plug-in that was not built do nothing. */
  void Make(TPluginCall call);

  struct TState {
    bool isBusy = false;             // calls are queued or in progress
    std::optional<TPluginCall> call; // in progress
    bigtime_t sinceUs = 0;           // start of that call
    bool isBuilt = false;
    bool hasEnded = false;
    /** The plug-in's own texts, else its file name. */
    std::string name;
    std::string info;
    /** How calls failed since the last TakeState. */
    std::vector<std::string> failures;
  };
  TState TakeState();

private:
  struct TInside;
  static void Run(const std::shared_ptr<TInside>& inside);
  const std::shared_ptr<TInside> fInside; // outlives this object while a call hangs
  std::thread fThread;
};
