#pragma once

#include "platform/app/looper.h"
#include "tests/display/hands.h"
#include "window/editor_window.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <future>
#include <list>
#include <string>
#include <vector>

/** Bears the player's signature and answers as the test tells it to. */
class FakePlayer : public BLooper {
public:
  FakePlayer();
  ~FakePlayer() override;
  void MessageReceived(BMessage* message) override;

  std::atomic<int32> fPositionMs{0};
  std::atomic<int32> fRecordsSent{0};
  /** Of the one song of the playlist; empty: the playlist is empty. Set before anybody asks. */
  std::string fSongPath;
  /** Set: questions about the playlist are kept and not answered. */
  std::atomic<bool> fIsSilent{false};

private:
  void AnswerAboutSongs(BMessage* question);
  std::list<BMessage> fUnanswered;
};

/** What every window of the editor finds when it opens: settings, texts, an empty settings folder. */
class EditorGlobals {
public:
  EditorGlobals();
  ~EditorGlobals();
  const std::string& Folder() const { return fFolder; }

private:
  std::string fFolder;
};

/** The editor's real window over a display without a screen, its messages delivered by the test. */
class EditorTest : public testing::Test {
protected:
  EditorTest();
  ~EditorTest() override;

  std::string PathOf(const std::string& name) const { return fGlobals.Folder() + "/" + name; }
  std::string Write(const std::string& name, const std::string& bytes) const;
  static std::string Read(const std::string& path);

  /** Delivers until neither the window, if it still lives, nor the display has anything left to do. */
  void Settle();
  void Send(BMessage message);
  void Open(const std::string& path);
  void Press(const std::string& key);
  /** Makes the document differ from what is on the disk: the selected line loses its tag, if it has one. */
  void Change() { Press("Delete"); }
  /** Does what leads to questions, answers each by its key, and returns what was asked. */
  std::vector<hands::Question> Answer(const std::vector<std::string>& keys, const std::function<void()>& act);
  hands::Question Answer(const char* key, const std::function<void()>& act) { return Answer({{key}}, act).front(); }
  /** True once `isSo` holds, while messages are delivered; gives up after 10 s. */
  bool Until(const std::function<bool()>& isSo);

  std::list<std::string> Lines() const;
  bool IsModified() const;
  std::string Title() const { return fWindow->Title(); }
  std::string Status() const { return hands::label_text(*fWindow, "StatusBar"); }
  bool IsClosed() const { return fClosed; }

  EditorGlobals fGlobals;
  FakePlayer* fPlayer;
  BLooper* fManager; // does not run: what it is told waits in its queue
  TVesmoEWin* fWindow;

  std::atomic<int> fAnsweredQuestions{0};

private:
  class HandDrivenWindow;
  std::atomic<bool> fClosed{false};
};
