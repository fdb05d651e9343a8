#pragma once

#include "editviews/edit_view_interface.h"
#include "tests/support/editor_world.h"
#include "tests/support/hands.h"
#include "tests/support/keeping.h"
#include "tests/support/messages.h"
#include "window/editor_window.h"

#include <atomic>
#include <functional>
#include <list>
#include <string>
#include <vector>

/** The editor's real window, its messages delivered by the test. */
struct EditorByHand : EditorWorld {
  EditorByHand();
  ~EditorByHand() override;

  /** Delivers until neither the window, if it still lives, nor the display has anything left to do. */
  void Settle();
  void Send(BMessage message);
  void SendToView(BMessage message);
  void Open(const std::string& path);
  void Press(const std::string& key);
  /** As the window for it tells it. */
  void Shift(const char* amountMs);
  void PressCloseButton();
  /** Lets the player play there, and the editor know of it. */
  void PlayAt(int32 positionMs, const std::string& title = "song");
  /** Marks the document: the selected line loses its tag, if it has one. */
  void Change() { Press("Delete"); }
  /** Does what leads to questions, answers each by its key, and returns what was asked. */
  std::vector<hands::Question> Answer(const std::vector<std::string>& keys, const std::function<void()>& act);
  hands::Question Answer(const char* key, const std::function<void()>& act) { return Answer({{key}}, act).front(); }
  /** True once `isSo` holds, while messages are delivered. */
  bool Until(const std::function<bool()>& isSo);

  /** The one that is shown. */
  TEditViewInterface& EditView() const;
  std::list<std::string> Lines() const;
  bool IsModified() const;
  /** Empty once the window is closed. */
  std::string Title() const { return fClosed ? std::string() : fWindow->Title(); }
  std::string Status() const { return hands::label_text(*fWindow, "StatusBar"); }
  bool IsClosed() const { return fClosed; }

  Keeping<BLooper>* fManager; // does not run: its messages stay in its queue
  TVesmoEWin* fWindow;

private:
  class HandDrivenWindow;
  std::atomic<bool> fClosed{false};
};
