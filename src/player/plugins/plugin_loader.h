#pragma once

#include "player/plugins/plugin_file.h"
#include "player/plugins/plugin_thread.h"

#include <deque>

/** The player's plug-ins: which files become one, in which order they are loaded and ended, and which does not answer.
    Nothing here waits for a plug-in: what has come of the calls is seen by `Proceed`. One thread makes every call. */
class TPluginLoader {
public:
  /** `answered`: `Proceed` has something to look at; called on threads of the plug-ins. A plug-in that has not returned
      from a call after `patienceUs` is reported and waited for no longer. */
  TPluginLoader(std::function<void()> answered, bigtime_t patienceUs);

  using TWanted = std::function<bool(const std::string& name)>;
  /** Has those `gen_*.so` of the folder that are wanted loaded and shown, one after another in byte order. A file that
      is not safe to load, is loaded already, exports no `NewPlugin`, or fails in it is left out; one that fails in
      `Init` stays. */
  void Load(const std::string& folder, const TWanted& wanted);
  /** Cleans up and destroys every plug-in, the last one first, and unloads those images of which no looper is left. */
  void BeginEnd();
  /** Goes on with the above. Returns what went wrong since the last time, a line each. */
  std::vector<std::string> Proceed();
  /** `Proceed` is needed: after each answer, and now and then for those that give none. */
  bool IsBusy() const;
  bool IsLoading() const;
  /** Nothing is left to wait for, and whether that is because every plug-in has gone. */
  bool HasEnded() const;
  bool AreAllGone() const { return fPlugins.empty(); }

  /** Those that were built, in the order in which they were. */
  int Count() const { return static_cast<int>(fBuilt.size()); }
  const std::string& Name(int index) const { return At(index).name; }
  const std::string& Info(int index) const { return At(index).info; }
  /** Not for loading and ending. */
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
  void Report(const std::string& fileName, const std::string& reason);

  const std::function<void()> fAnswered;
  const bigtime_t fPatienceUs;
  std::deque<TCandidate> fWaiting;
  std::vector<std::unique_ptr<TPlugin>> fPlugins; // in the order of loading
  std::vector<TPlugin*> fBuilt;
  std::vector<std::string> fFaults;
  bool fIsEnding = false;
};

/** $SONIVO_PLUGINS, else the folder "plugins" beside the program's file. Only an absolute path is taken from the
    environment; `fault` says so when there is another. */
std::string plugin_folder(std::string* fault);
