#pragma once

#include "platform/kernel/thread_checker.h"
#include "player/plugins/plugin_file.h"
#include "player/plugins/plugin_thread.h"

#include <deque>

/** Loads and ends the plug-ins one after another, and detects those that do not answer. Never waits for a plug-in:
    `Proceed` looks at the results of the calls. Used by one thread. */
class TPluginLoader {
public:
  /** `answered` is called on the plug-ins' threads when `Proceed` has something to do. A plug-in that has not returned
      from a call after `timeoutUs` is reported, and no longer holds up the others. */
  TPluginLoader(std::function<void()> answered, bigtime_t timeoutUs);

  using TWanted = std::function<bool(const std::string& name)>;
  /** Starts loading and showing the wanted `gen_*.so` of the folder, one after another. A file that is not safe to
     load, is loaded already, exports no `NewPlugin`, or fails in it is skipped; one that fails in `Init` stays. */
  void Load(const std::string& folder, const TWanted& wanted);
  /** Starts cleaning up and destroying the plug-ins, in reverse order, and unloads the images without loopers. */
  void BeginEnd();
  /** Continues Load and BeginEnd. Returns the errors since the last call, one line each. */
  std::vector<std::string> Proceed();
  /** Answers are pending: call `Proceed` after each, and regularly to detect those that are overdue. */
  bool IsBusy() const;
  bool IsLoading() const;
  /** After BeginEnd: every plug-in has ended or is overdue. */
  bool HasEnded() const;
  bool AreAllGone() const { return fPlugins.empty(); }

  /** The plug-ins that were built, in that order. */
  int Count() const { return static_cast<int>(fBuilt.size()); }
  const std::string& Name(int index) const { return At(index).name; }
  const std::string& Info(int index) const { return At(index).info; }
  /** For kShow, kPrefs and kAbout. */
  void Make(int index, TPluginCall call);

private:
  enum class TStage { kLoading, kShowing, kShown, kEnding };
  struct TPlugin {
    TPluginFile file;
    std::string fileName;
    std::unique_ptr<TPluginThread> thread;
    TStage stage = TStage::kLoading;
    bool isOverdue = false;
    bool isBusy = true;
    std::string name = {};
    std::string info = {};
  };
  struct TCandidate {
    std::string folder;
    std::string fileName;
  };
  const TPlugin& At(int index) const { return *fBuilt.at(static_cast<size_t>(index)); }
  void LookAt(TPlugin& plugin);
  void Advance(TPlugin& plugin, bool isBuilt);
  void Built(TPlugin& plugin);
  void Begin(const TCandidate& candidate);
  bool IsOneComing() const;
  void EndNext();
  static void Ask(TPlugin& plugin, TStage stage, TPluginCall call);
  void Refuse(const std::string& fileName, const std::string& reason);

  ThreadChecker fThread;
  const std::function<void()> fAnswered;
  const bigtime_t fTimeoutUs;
  std::deque<TCandidate> fWaiting;
  std::vector<std::unique_ptr<TPlugin>> fPlugins; // in the order of loading
  std::vector<TPlugin*> fBuilt;
  std::vector<std::string> fErrors;
  bool fIsEnding = false;
};

/** $SONIVO_PLUGINS, else the folder "plugins" next to the executable. A relative path in the environment is ignored,
    and reported in `error`. */
std::string plugin_folder(std::string* error);
