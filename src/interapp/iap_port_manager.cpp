#include "interapp/iap_port_manager.h"

#include "platform/app/message.h"
#include "platform/kernel/ports.h"
#include "plugin/message_codes.h"

#include <vector>

namespace {
constexpr int32 kCapacity = 100;
constexpr long kPriority = 10;
/** Waiting for room in the window's queue is unlimited, but cancellable at this interval. */
constexpr bigtime_t kSliceUs = 50000;

bool is_offered(uint32 code) {
  return code == kMsgIAPControls || code == kMsgIAPActivate || code == B_QUIT_REQUESTED;
}
} // namespace

TIAPPortManager::TIAPPortManager(const BMessenger& window) : TThread("KOREVA IAP port", kPriority), fWindow(window) {}

TIAPPortManager::~TIAPPortManager() {
  Stop();
}

void TIAPPortManager::Stop() {
  Terminate();
  if (fPort > 0) delete_port(fPort); // wakes the reader
  Wait();
}

int32 TIAPPortManager::Execute() {
  const port_id port = create_port(kCapacity, kIAPPortName);
  fPort = port > 0 ? port : kNoPort;
  if (port <= 0) return B_ERROR;
  while (!IsTerminated() && HandOn()) {
  }
  delete_port(port);
  return B_OK;
}

/** False if the port has been deleted. */
bool TIAPPortManager::HandOn() {
  const ssize_t size = port_buffer_size(fPort);
  if (size < 0) return false;
  std::vector<char> flat(static_cast<size_t>(size));
  int32 code = 0;
  if (read_port(fPort, &code, flat.data(), flat.size()) < 0) return false;
  BMessage message;
  // Untrusted: only complete messages with one of the three offered codes are forwarded.
  if (message.Unflatten(flat.data(), flat.size()) == B_OK && is_offered(message.what)) Deliver(message);
  return true;
}

void TIAPPortManager::Deliver(const BMessage& message) {
  status_t status = B_TIMED_OUT;
  while (status == B_TIMED_OUT && !IsTerminated()) status = fWindow.SendMessage(&message, BMessenger(), kSliceUs);
}
