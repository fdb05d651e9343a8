#include "player/plugins/plugin_thread.h"

#include "platform/app/application.h"
#include "platform/kernel/threads.h"
#include "platform/support/log.h"
#include "player/texts/player_texts.h"
#include "plugin/general_plugin.h"

#include <dlfcn.h>

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <utility>

namespace {

using NewPluginFunction = GeneralPlugin* (*)(PluginConstructorStruct*);

/** Makes a call into a plug-in. Returns a message if it failed; empty on success. */
template <typename Call>
std::string failure_of(const std::string& fileName, Call call) {
  try {
    call();
    return {};
  } catch (const std::exception& error) {
    return player_text("Player_Plugin_Failed_With", {fileName, error.what()});
  } catch (...) {
    return player_text("Player_Plugin_Failed", {fileName});
  }
}

/** An image and the object that its entry point made; used by the plug-in's thread only. */
class TLoadedPlugin {
public:
  explicit TLoadedPlugin(std::string fileName) : fFileName(std::move(fileName)) {}
  /** Return a message if it failed; empty on success. */
  std::string Load(const std::string& path);
  std::string Make(TPluginCall call);
  bool IsBuilt() const { return fObject != nullptr; }
  std::string Text(char* GeneralPlugin::*text, const std::string& other) const {
    return fObject && fObject.get()->*text ? fObject.get()->*text : other;
  }

private:
  std::string Build(NewPluginFunction construct);
  std::string End();
  const std::string fFileName;
  void* fImage = nullptr;
  std::unique_ptr<GeneralPlugin> fObject;
};

std::string TLoadedPlugin::Load(const std::string& path) {
  fImage = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (fImage == nullptr) return player_text("Player_Plugin_Not_Loaded", {fFileName, dlerror()});
  const auto construct = reinterpret_cast<NewPluginFunction>(dlsym(fImage, "NewPlugin"));
  if (construct) return Build(construct);
  dlclose(fImage);
  return player_text("Player_Plugin_Not_Loaded", {fFileName, player_text("Player_Plugin_No_Entry")});
}

/** An image whose entry point failed may have left a thread running: it stays mapped. */
std::string TLoadedPlugin::Build(NewPluginFunction construct) {
  PluginConstructorStruct record;
  std::string failure = failure_of(fFileName, [&] { fObject.reset(construct(&record)); });
  if (fObject == nullptr && failure.empty()) failure = player_text("Player_Plugin_No_Object", {fFileName});
  return failure;
}

std::string TLoadedPlugin::Make(TPluginCall call) {
  if (fObject == nullptr) return {};
  if (call == TPluginCall::kEnd) return End();
  return failure_of(fFileName, [&] {
    if (call == TPluginCall::kShow) fObject->Init();
    if (call == TPluginCall::kPrefs) fObject->Prefs(false);
    if (call == TPluginCall::kAbout) fObject->About(false);
  });
}

std::string TLoadedPlugin::End() {
  const int32 loopersBefore = be_app ? be_app->CountLoopers() : 0;
  std::string failure = failure_of(fFileName, [this] { fObject->Cleanup(); });
  fObject.reset();
  // The destructor ends the plug-in's loopers; if none has ended, their code is still in use and stays mapped.
  const bool endedSome = be_app == nullptr || be_app->CountLoopers() < loopersBefore;
  if (endedSome) dlclose(fImage);
  return failure;
}

} // namespace

struct TPluginThread::TInside {
  const std::string fileName;
  const std::function<void()> answered;
  TLoadedPlugin plugin{fileName};
  std::mutex mutex{}; // guards path, calls, isClosed, state
  std::condition_variable changed{};
  std::string path{};
  std::deque<TPluginCall> calls{};
  bool isClosed = false;
  TState state{};

  std::optional<TPluginCall> NextCall();
  void Answer(TPluginCall call, std::string failure);
  void AnswerCalls();
};

TPluginThread::TPluginThread(const std::string& fileName, std::function<void()> answered)
    : fInside(new TInside{.fileName = fileName, .answered = std::move(answered)}), fThread(Run, fInside) {}

TPluginThread::~TPluginThread() {
  std::unique_lock lock(fInside->mutex);
  fInside->calls.clear();
  fInside->isClosed = true;
  const bool hangs = fInside->state.call.has_value();
  lock.unlock();
  fInside->changed.notify_one();
  if (hangs)
    fThread.detach();
  else
    fThread.join();
}

void TPluginThread::Load(const std::string& path) {
  {
    const std::lock_guard lock(fInside->mutex);
    fInside->path = path;
  }
  Make(TPluginCall::kLoad);
}

void TPluginThread::Make(TPluginCall call) {
  const std::lock_guard lock(fInside->mutex);
  fInside->calls.push_back(call);
  fInside->changed.notify_one();
}

TPluginThread::TState TPluginThread::TakeState() {
  const std::lock_guard lock(fInside->mutex);
  TState state = fInside->state;
  state.isBusy = state.call.has_value() || !fInside->calls.empty();
  fInside->state.failures.clear();
  return state;
}

/** Blocks until there is a call; none after closing. */
std::optional<TPluginCall> TPluginThread::TInside::NextCall() {
  std::unique_lock lock(mutex);
  changed.wait(lock, [this] { return isClosed || !calls.empty(); });
  if (isClosed) return {};
  state.call = calls.front();
  state.sinceUs = system_time();
  calls.pop_front();
  return state.call;
}

void TPluginThread::TInside::Answer(TPluginCall call, std::string failure) {
  {
    const std::lock_guard lock(mutex);
    state.call.reset();
    state.isBuilt = plugin.IsBuilt();
    state.hasEnded = call == TPluginCall::kEnd;
    state.name = plugin.Text(&GeneralPlugin::fName, fileName);
    state.info = plugin.Text(&GeneralPlugin::fInfo, state.name);
    if (!failure.empty()) state.failures.push_back(std::move(failure));
  }
  answered();
}

void TPluginThread::TInside::AnswerCalls() {
  while (const std::optional<TPluginCall> call = NextCall()) {
    Answer(*call, *call == TPluginCall::kLoad ? plugin.Load(path) : plugin.Make(*call));
    if (*call == TPluginCall::kEnd) return;
  }
}

void TPluginThread::Run(const std::shared_ptr<TInside>& inside) {
  try {
    inside->AnswerCalls();
  } catch (const std::exception& error) {
    // The missing answer is noticed by its time-out.
    log_error("plug-ins", inside->fileName + ": " + error.what());
  }
}
