#pragma once

#include "document/editor_view.h"
#include "editviews/edit_view_interface.h"
#include "tests/support/editor_world.h"
#include "tests/support/hands.h"
#include "tests/support/keeping.h"
#include "tests/support/messages.h"
#include "tests/support/testing.h"
#include "window/editor_window.h"

/** The editor's real window, its messages delivered by the test. */
struct EditorByHand : EditorWorld {
  EditorByHand();
  ~EditorByHand() override;

  /** Delivers until neither the window, if it still lives, nor the display has anything left to do. */
  void Settle();
  void Send(BMessage message);
  void SendToView(BMessage message);
  void Open(const std::string& path);
  /** Opens a file of that text, and selects the line. */
  void Show(const std::string& lyrics, int32 selected = 0);
  void Press(const std::string& key);
  template <typename... More>
  void Press(const std::string& first, const std::string& second, const More&... more) {
    Press(first);
    Press(second, more...);
  }
  void Click(const char* view);
  /** What a save panel sends for a file of that name in the test's folder. */
  template <typename... Fields>
  BMessage SaveAs(const char* name, const Fields&... fields) const {
    return message_of(B_SAVE_REQUESTED, "directory", ref_of(fFolder.Path()), "name", name, fields...);
  }
  /** The number of the open document. */
  int32 Document() const { return static_cast<TVesmoEView*>(fWindow->FindView("VesmoEditorView"))->DocumentNumber(); }
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
  /** The text of the notice bar; empty while there is none. */
  std::string Notice() const;
  /** That this is what the player is told last. */
  bool WasTold(const StrangeHost::Command& command);
  std::string Status() const { return hands::label_text(*fWindow, "StatusBar"); }
  bool IsClosed() const { return fClosed; }

  Keeping<BLooper>* fManager; // does not run: its messages stay in its queue
  TVesmoEWin* fWindow;

private:
  class HandDrivenWindow;
  std::atomic<bool> fClosed{false};
};
