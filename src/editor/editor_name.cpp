#include "editor/editor_name.h"

#include "common/app_info.h"
#include "family/message_filters.h"
#include "platform/app/application.h"
#include "platform/app/looper_lock.h"
#include "platform/app/message.h"
#include "platform/app/roster.h"
#include "platform/support/log.h"
#include "plugin/message_codes.h"

TEditorName::TEditorName(const BMessenger& manager) : BHandler(gAppSignature), fManager(manager) {}

void TEditorName::Register() {
  const TLooperLock lock(be_app);
  if (!lock) return;
  be_app->AddHandler(this);
  be_roster->AddName(gAppSignature, BMessenger(this), {kMsgIAPChanged, B_REFS_RECEIVED, B_ABOUT_REQUESTED});
}

void TEditorName::Unregister() {
  const TLooperLock lock(be_app);
  if (!lock || Looper() != be_app) return;
  be_roster->RemoveName(gAppSignature);
  be_app->RemoveHandler(this);
}

void TEditorName::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgIAPChanged:
    return; // forwarded by the filters already
  case B_REFS_RECEIVED:
  case B_ABOUT_REQUESTED:
    // Without waiting: the application must not block on a manager.
    if (fManager.SendMessage(message, BMessenger(), 0) != B_OK)
      log_error(gAppSignature, "the editor is busy or ending");
    return;
  default:
    BHandler::MessageReceived(message);
  }
}
