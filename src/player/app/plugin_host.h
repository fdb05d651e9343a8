#pragma once

#include "platform/kernel/thread_checker.h"
#include "player/app/message_timer.h"
#include "player/model/player_state.h"
#include "player/plugins/plugin_loader.h"

class TPlayerEvents;

/** The player's plug-ins, and their menu commands: the editor is loaded with the first windows, the others
    later. Application's thread. */
class TPluginHost {
public:
  /** `player` is sent kMsgLookAtPlugins when there is something for Proceed. */
  TPluginHost(const BMessenger& player, TPlayerEvents* events);

  void LoadEditor();
  void LoadOthers();
  /** Opens the file in the editor, once that is loaded. */
  /** Has the editor open the lyrics file of a song, which may not exist yet. */
  void ShowLyricsOf(const std::string& song);
  void ShowLyrics(const std::string& path);
  /** Takes the plug-ins' answers. To be called after each one, and regularly while one is pending. */
  void Proceed();
  /** Requests of the window; false for any other message. */
  bool Handle(const BMessage& message);
  const std::vector<TPluginTexts>& Texts() const { return fTexts; }

  /** Proceed ends them one after another. */
  void BeginEnd() { fLoader.BeginEnd(); }
  /** Each has ended, or does not answer; false before BeginEnd. */
  bool HasEnded() const { return fLoader.HasEnded(); }
  bool AreAllGone() const { return fLoader.AreAllGone(); }

private:
  void Load(const TPluginLoader::TWanted& wanted);
  void ReportTexts();
  void WatchForAnswers();

  ThreadChecker fThread;
  TPlayerEvents* const fEvents;
  TPluginLoader fLoader;
  std::vector<TPluginTexts> fTexts;
  std::vector<std::string> fPendingLyrics; // opened when the editor has been loaded
  TMessageTimer fAnswerTimer;
};
