#include "platform/app/looper.h"

#include "platform/app/looper_core.h"
#include "platform/app/looper_lock.h"
#include "platform/app/message_body.h"
#include "platform/app/message_filter.h"
#include "platform/app/nonblocking_thread.h"
#include "platform/support/log.h"

#include <algorithm>
#include <exception>
#include <utility>

BLooper::BLooper(const char* name, int32 priority, int32 portCapacity)
    : BHandler(name),
      fCore(std::make_shared<Core>(this, static_cast<size_t>(std::max<int32>(portCapacity, 1)), priority)) {
  fLooper = this;
  token_registry::add_looper(fCore);
}

BLooper::~BLooper() {
  fCore->Close();
  for (BHandler* handler : fCore->handlers) handler->fLooper = nullptr;
  fCore->handlers.clear();
  for (BMessageFilter* filter : fCore->filters) delete filter;
  fCore->filters.clear();
  fLooper = nullptr;
  // A looper that ran is unregistered at the end of its thread.
  if (fCore->thread == 0) token_registry::remove_looper(fCore->token);
}

status_t BLooper::PostMessage(uint32 code) {
  return PostMessage(code, nullptr);
}
status_t BLooper::PostMessage(const BMessage* message) {
  return PostMessage(message, nullptr);
}
status_t BLooper::PostMessage(uint32 code, BHandler* handler, BHandler* replyTo) {
  const BMessage message(code);
  return PostMessage(&message, handler, replyTo);
}
status_t BLooper::PostMessage(const BMessage* message, BHandler* handler, BHandler* replyTo) {
  if (handler && handler->Looper() != this) return B_BAD_HANDLER;
  return BMessenger(handler, this).SendMessage(message, replyTo, 0);
}

void BLooper::DispatchMessage(BMessage* message, BHandler* handler) {
  if (message->what == B_QUIT_REQUESTED && handler == this) {
    const bool agreed = QuitRequested();
    BMessage answer(B_REPLY);
    answer.AddBool("result", agreed);
    message->SendReply(&answer);
    if (agreed) Quit();
    return;
  }
  handler->MessageReceived(message);
}

void BLooper::MessageReceived(BMessage* message) {
  BHandler::MessageReceived(message);
}
bool BLooper::QuitRequested() {
  return true;
}
BMessage* BLooper::CurrentMessage() const {
  fCore->AssertLocked();
  return fCore->current;
}

void BLooper::AddHandler(BHandler* handler) {
  if (handler == nullptr || handler->fLooper != nullptr) return;
  fCore->AssertLocked();
  handler->fLooper = this;
  fCore->handlers.push_back(handler);
}

bool BLooper::RemoveHandler(BHandler* handler) {
  fCore->AssertLocked();
  if (handler == this || std::erase(fCore->handlers, handler) == 0) return false;
  handler->fLooper = nullptr;
  return true;
}

void BLooper::AddCommonFilter(BMessageFilter* filter) {
  fCore->AssertLocked();
  filter->fLooper = this;
  fCore->filters.push_back(filter);
}
bool BLooper::RemoveCommonFilter(BMessageFilter* filter) {
  fCore->AssertLocked();
  if (std::erase(fCore->filters, filter) == 0) return false;
  filter->fLooper = nullptr;
  return true;
}

thread_id BLooper::Run() {
  if (fCore->thread != 0) return fCore->thread;
  // The thread keeps the core alive by a reference of its own.
  auto held = std::make_unique<std::shared_ptr<Core>>(fCore);
  const std::shared_ptr<Core> core = fCore;
  const thread_id thread = spawn_thread(&BLooper::LoopEntry, Name(), core->priority, held.get());
  if (thread < 0) return thread;
  core->thread = thread;
  if (const status_t status = resume_thread(thread); status != B_OK) {
    core->thread = 0; // not running: Quit deletes it
    return status;
  }
  static_cast<void>(held.release()); // the thread owns it
  return thread;
}

int32 BLooper::LoopEntry(void* argument) {
  const std::unique_ptr<std::shared_ptr<Core>> held(static_cast<std::shared_ptr<Core>*>(argument));
  const std::shared_ptr<Core> core = *held;
  BMessage message;
  while (core->queue.Pop(&message, B_INFINITE_TIMEOUT) == B_OK) {
    const TLooperLock lock(core, B_INFINITE_TIMEOUT);
    // The previous owner of the lock may have quit the looper: what it owned is closed, no message may open it again.
    if (core->queue.IsClosed())
      Core::AgreeToQuit(message);
    else
      core->looper->Deliver(&message);
    message = BMessage(); // an unanswered asker is released now, not with the next message
  }
  core->TakeForEver();
  delete core->looper;
  token_registry::remove_looper(core->token);
  return 0;
}

void BLooper::Quit() {
  const std::shared_ptr<Core> core = fCore;
  const thread_id thread = core->thread;
  if (thread == 0) {
    core->TakeForEver();
    delete this;
    return;
  }
  core->Close();
  if (find_thread(nullptr) == thread) return;
  core->ReleaseAll();
  wait_for_thread(thread, nullptr);
}

BHandler* BLooper::TargetOf(BMessage* message) {
  const uint64 token = message->fEnvelope ? message->fEnvelope->handlerToken : 0;
  if (token == 0) return this;
  const auto& handlers = fCore->handlers;
  const auto found = std::find_if(handlers.begin(), handlers.end(), [&](BHandler* h) { return h->fToken == token; });
  return found == handlers.end() ? nullptr : *found;
}

BHandler* BLooper::Filtered(BMessage* message, BHandler* target) {
  const std::vector<BMessageFilter*> filters = fCore->filters; // a filter may remove itself
  for (BMessageFilter* filter : filters) {
    if (target == nullptr) return nullptr;
    if (filter->Command() != 0 && filter->Command() != message->what) continue;
    if (filter->Filter(message, &target) == B_SKIP_MESSAGE) return nullptr;
  }
  return target;
}

namespace {

/** Resolves the specifiers of a scripting message from handler to handler, until one returns itself. */
BHandler* resolved(BMessage* message, BHandler* target) {
  std::string property;
  uint32 form = 0;
  int32 index = 0;
  while (target && message->GetCurrentSpecifier(&property, &form, &index) == B_OK) {
    BMessage specifier(form);
    specifier.AddString("property", property);
    if (form == B_INDEX_SPECIFIER) specifier.AddInt32("index", index);
    BHandler* next = target->ResolveSpecifier(message, index, &specifier, static_cast<int32>(form), property.c_str());
    if (next == target) break;
    target = next;
  }
  return target;
}

} // namespace

void BLooper::Deliver(BMessage* message) {
  const std::shared_ptr<Core> core = fCore; // a looper that does not run is deleted when its handler quits it
  BMessage* const before = core->current;
  core->current = message;
  try {
    BHandler* target = Filtered(message, TargetOf(message));
    if (target) target = resolved(message, target);
    if (target) DispatchMessage(message, target);
  } catch (const std::exception& error) {
    log_error(Name(), error.what());
  } catch (...) {
    log_error(Name(), "a handler threw an object of an unknown type");
  }
  core->current = before;
}

bool BLooper::Lock() {
  return LockWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}
status_t BLooper::LockWithTimeout(bigtime_t timeout) {
  const std::shared_ptr<Core> core = fCore;
  return core->Lock(NonblockingThread::Bounded(timeout));
}
void BLooper::Unlock() {
  const std::shared_ptr<Core> core = fCore;
  core->Unlock();
}
thread_id BLooper::Thread() const {
  return fCore->thread;
}

BLooper* BLooper::LooperForThread(thread_id thread) {
  for (const auto& core : token_registry::all_loopers()) {
    if (thread != 0 && core->thread == thread) return core->looper;
  }
  return nullptr;
}

// Static, since a message may end the looper; its core lives on.
bool BLooper::DeliverOne(const std::shared_ptr<Core>& core) {
  BMessage message;
  if (core->queue.Pop(&message, 0) != B_OK) return false;
  const TLooperLock lock(core, B_INFINITE_TIMEOUT);
  if (lock) core->looper->Deliver(&message);
  return static_cast<bool>(lock);
}

bool BLooper::DeliverNext() {
  return DeliverOne(std::shared_ptr(fCore));
}

int32 BLooper::DeliverAll() {
  const std::shared_ptr<Core> core = fCore;
  int32 delivered = 0;
  while (DeliverOne(core)) ++delivered;
  return delivered;
}

int32 BLooper::CountMessages() const {
  return static_cast<int32>(fCore->queue.Count());
}

void BLooper::SetAnswerCodes(std::vector<uint32> codes) {
  const std::lock_guard lock(fCore->mutex);
  fCore->answerCodes = std::move(codes);
}

bool BLooper::IsCallAllowed() const {
  return fCore->thread == 0 || fCore->IsLockedByCaller();
}

void BLooper::SetWindow(BWindow* window) {
  fCore->window = window;
}

BMessenger BLooper::AddressOf(const Core& core) {
  BMessenger address;
  address.fLooperToken = core.token;
  return address;
}
