/** The other process of a test. Reads commands from standard input, one per line, and answers each with one line:
      port NAME CAPACITY         creates a port: a status
      read NAME                  the code and the bytes of its next message, waiting for one
      delete NAME                deletes a port: a status
      write NAME TEXT TIMEOUT    writes to a port: a status
      read-many NAME COUNT       reads that many: how many came in order
      app SIGNATURE CAPACITY     starts an application with the signature, see Echo
      ask SIGNATURE TEXT         asks an application: its answer
      notes                      how many notes the application has received
      notify SIGNATURE           asks an application with a looper as the target of the answer: a status
      send SIGNATURE CODE        asks an application with any code: the code of the answer
      letters COUNT SEED PROCESS SIGNATURE...
                                 attacks a process, see hostile_letters.h: how many reached a looper */

#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/app/roster.h"
#include "platform/kernel/ports.h"
#include "tests/processes/hostile_letters.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string status_name(status_t status) {
  static const std::map<status_t, std::string> names{{B_NAME_IN_USE, "in use"},
                                                     {B_PERMISSION_DENIED, "denied"},
                                                     {B_BAD_PORT_ID, "gone"},
                                                     {B_TIMED_OUT, "timed out"},
                                                     {B_WOULD_BLOCK, "would block"}};
  const auto found = names.find(status);
  if (found != names.end()) return found->second;
  return status >= 0 ? "ok" : "failed";
}

std::string read_one(port_id port) {
  std::array<char, 256> bytes{};
  int32 code = 0;
  const ssize_t count = read_port(port, &code, bytes.data(), bytes.size());
  if (count < 0) return status_name(static_cast<status_t>(count));
  return std::to_string(code) + " " + std::string(bytes.data(), static_cast<size_t>(count));
}

int32 read_many(port_id port, int32 count) {
  int32 inOrder = 0;
  for (int32 i = 0; i < count; ++i) {
    int32 code = 0;
    int32 value = -1;
    if (read_port(port, &code, &value, sizeof value) == sizeof value && code == i && value == i) ++inOrder;
  }
  return inOrder;
}

/** 'ask?' is answered with the same text, 'drop' not at all, 'keep' when the next 'free' comes, 'twic' twice, 'odd?' by
   a code of its own; 'note' is counted, 'stop' is answered and blocks the application until the process ends. */
struct Echo : BLooper {
  Echo(const char* signature, int32 capacity) : BLooper("echo", B_NORMAL_PRIORITY, capacity) {
    const std::vector<uint32> offered{'ask?', 'drop', 'keep', 'free', 'twic', 'note', 'stop', 'odd?'};
    if (be_roster->AddName(signature, BMessenger(this), offered) == B_OK) Run();
  }

  void MessageReceived(BMessage* message) override {
    BMessage answer('answ');
    std::string text;
    if (message->FindString("text", &text) == B_OK) answer.AddString("text", text);
    answer.AddBool("remote", message->IsSourceRemote());
    const uint32 what = message->what;
    if (what == 'ask?' || what == 'twic' || what == 'stop') message->SendReply(&answer);
    if (what == 'twic') message->ReturnAddress().SendMessage(&answer, BMessenger());
    if (what == 'odd?') message->SendReply('quit');
    if (what == 'keep') fKept = *message;
    if (what == 'free') fKept.SendReply('free');
    if (what == 'note') ++sNotes;
    while (what == 'stop') pause();
  }

  static std::atomic<int> sNotes;

private:
  BMessage fKept;
};

std::atomic<int> Echo::sNotes{0};

BMessage answer_of(const std::string& signature, const BMessage& question) {
  BMessage answer('fail');
  BMessenger(signature.c_str()).SendMessage(&question, &answer);
  return answer;
}

std::string ask(const std::string& signature, const std::string& text) {
  BMessage question('ask?');
  question.AddString("text", text);
  const BMessage answer = answer_of(signature, question);
  return answer.GetString("text", answer.what == 'fail' ? "failed" : "nothing");
}

std::string send_code(const std::string& signature, const std::string& code) {
  BMessage question(0);
  for (const char c : code) question.what = question.what << 8 | static_cast<unsigned char>(c);
  const uint32 answered = answer_of(signature, question).what;
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(answered >> shift & 0xff);
  return text;
}

status_t notify(const std::string& signature) {
  auto* const looper = new BLooper("asker");
  looper->Run();
  const BMessage question('ask?');
  return BMessenger(signature.c_str()).SendMessage(&question, BMessenger(looper));
}

std::string start_app(const std::string& signature, int32 capacity) {
  new Echo(signature.c_str(), capacity);
  return be_roster->IsRunning(signature.c_str()) ? "ok" : "failed";
}

std::string execute(const std::string& command) {
  std::istringstream stream(command);
  const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
  const auto word = [&](size_t index) { return index < words.size() ? words[index] : std::string(); };
  const auto number = [&](size_t index) { return static_cast<int32>(std::atoi(word(index).c_str())); };
  const std::string name = word(1), text = word(2);
  const auto port = [&] { return find_port(name.c_str()); };
  const std::map<std::string, std::function<std::string()>> verbs{
      {"port", [&] { return status_name(create_port(number(2), name.c_str())); }},
      {"read", [&] { return read_one(port()); }},
      {"delete", [&] { return status_name(delete_port(port())); }},
      {"write", [&] { return status_name(write_port_etc(port(), 1, text.data(), text.size(), number(3))); }},
      {"read-many", [&] { return std::to_string(read_many(port(), number(2))); }},
      {"app", [&] { return start_app(name, number(2)); }},
      {"ask", [&] { return ask(name, text); }},
      {"notes", [] { return std::to_string(Echo::sNotes); }},
      {"notify", [&] { return status_name(notify(name)); }},
      {"send", [&] { return send_code(name, text); }},
      {"letters",
       [&] {
         const HostileLetters letters{
             number(1), static_cast<unsigned>(std::stoul(text)), word(3), {words.begin() + 4, words.end()}};
         return std::to_string(send_hostile_letters(letters));
       }},
  };
  const auto found = verbs.find(word(0));
  return found == verbs.end() ? "what?" : found->second();
}

} // namespace

int main() {
  for (std::string command; std::getline(std::cin, command);) std::cout << execute(command) << std::endl;
}
