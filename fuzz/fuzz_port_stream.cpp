#include "fuzz/fuzz.h"
#include "platform/app/looper.h"
#include "platform/app/message.h"
#include "platform/app/remote_mail.h"
#include "platform/kernel/threads.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>

namespace {

/** Unflattens and flattens every message, and sends it back. */
struct Answerer : BLooper {
  Answerer() : BLooper("answerer", B_NORMAL_PRIORITY, 2) {}
  void MessageReceived(BMessage* message) override {
    const std::vector<char> flat = message->Flatten();
    BMessage again;
    require(again.Unflatten(flat.data(), flat.size()) == B_OK && again.Flatten() == flat);
    require(message->IsSourceRemote());
    if (message->IsSourceWaiting()) message->SendReply(message);
  }
  bool QuitRequested() override { return false; } // any peer may request it
};

struct ToAnswerer : PortSink {
  explicit ToAnswerer(BMessenger target) : fTarget(target) {}
  status_t Offer(PortFrame* frame, const std::shared_ptr<PortReturn>& sender) override {
    return RemoteMail::Deliver(*frame, sender, {fTarget, {'_ipc', 'ask?', B_COUNT_PROPERTIES}});
  }

private:
  const BMessenger fTarget;
};

/** The port's replies are always well-formed. */
void read_back(int sender) {
  PortFrameReader reader;
  std::array<char, 65536> bytes;
  for (;;) {
    const ssize_t count = recv(sender, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count <= 0) break;
    reader.Feed({bytes.data(), static_cast<size_t>(count)});
  }
  PortFrame frame;
  while (reader.Next(&frame)) require(frame.flags == kFrameIsStatus || frame.flags == kFrameIsAnswer);
  require(!reader.IsBroken());
}

} // namespace

// The first byte is the offset at which the stream is split into two reads.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  static auto* const looper = new Answerer;
  int ends[2];
  if (size == 0 || socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return 0;
  const UniqueFd sender(ends[1]);
  PortConnection connection{UniqueFd(ends[0]), std::make_shared<ToAnswerer>(BMessenger(looper))};
  const std::string stream = text_of(bytes + 1, size - 1);
  const size_t cut = std::min<size_t>(bytes[0], stream.size());
  for (const std::string& piece : {stream.substr(0, cut), stream.substr(cut)}) {
    if (connection.IsOver() || piece.empty()) continue;
    send(sender.Get(), piece.data(), piece.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    connection.Handle(POLLIN);
    while (looper->DeliverAll() > 0) connection.LookAgain(system_time());
  }
  read_back(sender.Get());
  return 0;
}
