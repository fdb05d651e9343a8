/** Notices from one process to another beside signals over the desktop's message bus, and a question with its answer
    beside a method call: a bus of our own, the bus's own C library on both sides, the same two texts carried. */

#include "bench/rounds.h"
#include "platform/app/looper.h"
#include "platform/app/message.h"
#include "platform/app/roster.h"

#include <dbus/dbus.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

extern char** environ;

namespace {

constexpr int kNotices = 20000;
constexpr int kQuestions = 5000;
constexpr int kRounds = 7;
constexpr const char* kSignature = "application/x-vnd.test-notices";
constexpr const char* kBusName = "org.example.Notices";
constexpr const char* kItem = "FlatToolBar";
constexpr const char* kValue = "a - ";

/** Counts notices; answers a question with their number. */
class Receiver : public BLooper {
public:
  void MessageReceived(BMessage* message) override {
    std::string item;
    std::string value;
    if (message->FindString("Item", &item) != B_OK || message->FindString("Value", &value) != B_OK) return;
    if (message->what == 'note') ++fNotices;
    if (message->what != 'ask?') return;
    BMessage answer('answ');
    answer.AddInt32("Notices", fNotices);
    message->SendReply(&answer);
  }

private:
  int32 fNotices = 0;
};

DBusConnection* connect_to_bus(const char* address) {
  DBusConnection* const connection = dbus_connection_open_private(address, nullptr);
  if (connection == nullptr || !dbus_bus_register(connection, nullptr)) throw std::runtime_error("no bus");
  dbus_connection_set_exit_on_disconnect(connection, false);
  return connection;
}

DBusHandlerResult receive_from_bus(DBusConnection* connection, DBusMessage* message, void* notices) {
  const char* item = nullptr;
  const char* value = nullptr;
  if (!dbus_message_get_args(message, nullptr, DBUS_TYPE_STRING, &item, DBUS_TYPE_STRING, &value, DBUS_TYPE_INVALID)) {
    return DBUS_HANDLER_RESULT_NOT_YET_HANDLED;
  }
  if (dbus_message_is_signal(message, kBusName, "Note")) ++*static_cast<dbus_int32_t*>(notices);
  if (dbus_message_is_method_call(message, kBusName, "Ask")) {
    DBusMessage* const answer = dbus_message_new_method_return(message);
    dbus_message_append_args(answer, DBUS_TYPE_INT32, notices, DBUS_TYPE_INVALID);
    dbus_connection_send(connection, answer, nullptr);
    dbus_message_unref(answer);
  }
  return DBUS_HANDLER_RESULT_HANDLED;
}

/** The other process: receives both ways until its connection ends. */
int receive(const char* address) {
  auto* const receiver = new Receiver;
  receiver->Run();
  be_roster->AddName(kSignature, BMessenger(receiver), {'note', 'ask?'});
  DBusConnection* const bus = connect_to_bus(address);
  dbus_int32_t notices = 0;
  dbus_connection_add_filter(bus, receive_from_bus, &notices, nullptr);
  dbus_bus_add_match(bus, ("interface='" + std::string(kBusName) + "'").c_str(), nullptr);
  dbus_bus_request_name(bus, kBusName, DBUS_NAME_FLAG_DO_NOT_QUEUE, nullptr);
  std::puts("ready");
  std::fflush(stdout);
  while (dbus_connection_read_write_dispatch(bus, -1)) {
  }
  return 0;
}

/** A program with its standard output; killed with this object. */
class Child {
public:
  explicit Child(std::vector<std::string> line) {
    int output[2];
    if (pipe2(output, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    std::vector<char*> arguments;
    for (std::string& word : line) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    if (posix_spawnp(&fProcess, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) {
      throw std::runtime_error(line[0] + " does not start");
    }
    posix_spawn_file_actions_destroy(&actions);
    close(output[1]);
    fOutput = output[0];
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    kill(fProcess, SIGTERM);
    waitpid(fProcess, nullptr, 0);
    close(fOutput);
  }
  std::string ReadLine() const {
    std::string line;
    for (char c = 0; read(fOutput, &c, 1) == 1 && c != '\n';) line.push_back(c);
    return line;
  }

private:
  pid_t fProcess = 0;
  int fOutput = -1;
};

BMessage message_of(uint32 what) {
  BMessage message(what);
  message.AddString("Item", kItem);
  message.AddString("Value", kValue);
  return message;
}

int32 ask(const BMessenger& target) {
  const BMessage question = message_of('ask?');
  BMessage answer;
  target.SendMessage(&question, &answer);
  return answer.GetInt32("Notices", -1);
}

void send_notices(const BMessenger& target) {
  const BMessage notice = message_of('note');
  for (int i = 0; i < kNotices; ++i) target.SendMessage(&notice, BMessenger());
}

dbus_int32_t bus_ask(DBusConnection* bus) {
  DBusMessage* const question = dbus_message_new_method_call(kBusName, "/notices", kBusName, "Ask");
  dbus_message_append_args(question, DBUS_TYPE_STRING, &kItem, DBUS_TYPE_STRING, &kValue, DBUS_TYPE_INVALID);
  DBusMessage* const answer = dbus_connection_send_with_reply_and_block(bus, question, -1, nullptr);
  dbus_int32_t notices = -1;
  if (answer) dbus_message_get_args(answer, nullptr, DBUS_TYPE_INT32, &notices, DBUS_TYPE_INVALID);
  dbus_message_unref(question);
  if (answer) dbus_message_unref(answer);
  return notices;
}

void send_signals(DBusConnection* bus) {
  for (int i = 0; i < kNotices; ++i) {
    DBusMessage* const notice = dbus_message_new_signal("/notices", kBusName, "Note");
    dbus_message_append_args(notice, DBUS_TYPE_STRING, &kItem, DBUS_TYPE_STRING, &kValue, DBUS_TYPE_INVALID);
    dbus_connection_send(bus, notice, nullptr);
    dbus_message_unref(notice);
  }
  dbus_connection_flush(bus);
}

struct Times {
  std::vector<double> ours;
  std::vector<double> bus;
};

/** Until all notices have been handled over there, which the answer to the question behind them tells. */
void measure(const BMessenger& target, DBusConnection* bus, Times* notices, Times* questions) {
  for (int round = 1; round <= kRounds; ++round) {
    int32 ours = 0;
    int32 onBus = 0;
    notices->ours.push_back(seconds_of([&] {
      send_notices(target);
      ours = ask(target);
    }));
    notices->bus.push_back(seconds_of([&] {
      send_signals(bus);
      onBus = bus_ask(bus);
    }));
    if (ours != round * kNotices || onBus != round * kNotices) throw std::runtime_error("notices were lost");
    questions->ours.push_back(seconds_of([&] {
      for (int i = 0; i < kQuestions; ++i) ask(target);
    }));
    questions->bus.push_back(seconds_of([&] {
      for (int i = 0; i < kQuestions; ++i) bus_ask(bus);
    }));
  }
}

} // namespace

int main(int argc, char** argv) {
  if (argc > 1) return receive(argv[1]);
  const Child daemon({"dbus-daemon", "--session", "--nofork", "--print-address"});
  const std::string address = daemon.ReadLine();
  const Child other({argv[0], address});
  if (other.ReadLine() != "ready") throw std::runtime_error("the other process does not come up");
  const BMessenger target(kSignature);
  DBusConnection* const bus = connect_to_bus(address.c_str());
  Times notices;
  Times questions;
  measure(target, bus, &notices, &questions);
  std::printf("%-28s %14s %14s %8s\n", "between two processes", "loopers", "message bus", "ratio");
  std::printf("%-28s %11.0f /s %11.0f /s %7.2fx\n", "notices handled", kNotices / median(notices.ours),
              kNotices / median(notices.bus), median(notices.bus) / median(notices.ours));
  std::printf("%-28s %11.2f us %11.2f us %7.2fx\n", "question and answer", median(questions.ours) / kQuestions * 1e6,
              median(questions.bus) / kQuestions * 1e6, median(questions.ours) / median(questions.bus));
  dbus_connection_close(bus);
  dbus_connection_unref(bus);
  return 0;
}
