/** A front end in a process of its own, as any program could be: connects to the player, asks for the information
    record, and prints the answers, one per line. */

#include "platform/app/message.h"
#include "platform/app/messenger.h"

#include <cstring>
#include <iostream>
#include <string>

namespace {

BMessage ask(const BMessenger& whom, uint32 code) {
  const BMessage question(code);
  BMessage answer(B_ERROR);
  whom.SendMessage(&question, &answer);
  return answer;
}

void print_record(const BMessage& information) {
  const void* bytes = nullptr;
  ssize_t size = 0;
  if (information.FindData("Info", B_STRING_TYPE, &bytes, &size) != B_OK || size < 124) return;
  const char* const record = static_cast<const char*>(bytes);
  int32 positionMs = 0;
  std::memcpy(&positionMs, record + 4, sizeof positionMs);
  std::cout << size << " bytes\n"
            << positionMs << " ms\n"
            << std::string(record + 12, strnlen(record + 12, 112)) << "\n"
            << (information.GetBool("Playing") ? "playing\n" : "paused\n");
}

} // namespace

int main() {
  const BMessage handshake = ask(BMessenger("application/x-vnd.Marvik-Sonivo"), 'SNVm');
  std::string signature;
  if (handshake.FindString("Signature", &signature) != B_OK) return 1;
  const BMessenger host(signature.c_str());
  print_record(ask(host, 'SNVi'));
  const BMessage refusal = ask(host, B_QUIT_REQUESTED);
  std::cout << (refusal.GetInt32("error") == B_PERMISSION_DENIED ? "nothing else is offered\n"
                                                                 : "it took a request to quit\n");
}
