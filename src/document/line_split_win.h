#pragma once

#include "platform/app/messenger.h"
#include "toolkit/krv_dlg_win.h"

#include <memory>
#include <string>

class BButton;
class BStringView;
class BTextControl;
class TDocument;
class TEditSession;
class TKRVDlgView;

/** Asks where to split a line: shows its text, which is split at the caret. Answers with kMsgSplitLineAt. Closing hides
    it; TLineSplitter owns and quits it. */
class TLineSplitWin : public TKRVDlgWin {
public:
  TLineSplitWin();

  /** With the window locked. `request` is the answer without its texts. */
  void Ask(const std::string& text, const BMessage& request, const BMessenger& target);
  void MessageReceived(BMessage* message) override;

private:
  void Relabel();
  void Answer();

  std::unique_ptr<BMessage> fRequest; // null until asked
  BMessenger fTarget;
  TKRVDlgView* fView;  // the main child
  BStringView* fLabel; // fLabel to fGo: its children
  BTextControl* fField;
  BButton* fCancel;
  BButton* fGo;
};

/** Asks where to split a line of the tag input view, beside the view's window, and splits it. Owned by the document's
    view, on its window's thread; its own window is created at first use, and quit by the destructor. */
class TLineSplitter {
public:
  /** `owner` is attached, and passes kMsgSplitLine and kMsgSplitLineAt on. Nothing is owned. */
  TLineSplitter(const BView* owner, const TDocument* document, TEditSession* session)
      : fOwner(owner), fDocument(document), fSession(session) {}
  TLineSplitter(const TLineSplitter&) = delete;
  TLineSplitter& operator=(const TLineSplitter&) = delete;
  ~TLineSplitter();

  /** False for a message that is not about splitting. */
  bool Handle(const BMessage& message);

private:
  void Ask(const BMessage& request);
  void Split(const BMessage& answer);

  const BView* const fOwner;
  const TDocument* const fDocument;
  TEditSession* const fSession;
  TLineSplitWin* fWindow = nullptr;
};
