#include "tests/processes/hostile_letters.h"

#include "platform/app/message.h"
#include "platform/app/remote_letter.h"
#include "platform/kernel/ports.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <regex>
#include <set>
#include <sstream>

namespace {

/** The first group of every match in all sources. */
std::vector<std::string> words_of_sources(const std::regex& pattern) {
  std::set<std::string> words;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(SOURCE_FOLDER)) {
    const std::string path = entry.path();
    if (!path.ends_with(".cpp") && !path.ends_with(".h")) continue;
    std::stringstream text;
    text << std::ifstream(path).rdbuf();
    const std::string source = text.str();
    for (auto found = std::sregex_iterator(source.begin(), source.end(), pattern); found != std::sregex_iterator();
         ++found)
      words.insert((*found)[1]);
  }
  return {words.begin(), words.end()};
}

uint32 code_of(const std::string& word) {
  uint32 code = 0;
  for (const char c : word) code = code << 8 | static_cast<unsigned char>(c);
  return code;
}

struct Writer {
  explicit Writer(const HostileLetters& letters)
      : fOrder(letters), fRandom(letters.seed), fCodes(words_of_sources(std::regex("'([^'\\\\\n]{4})'"))),
        fNames(words_of_sources(std::regex("\"([A-Za-z_:]{2,16})\""))) {
    // Other processes may open files, which may ask the user.
    std::erase_if(fNames, [](const std::string& name) { return name == "refs" || name == "lyrics"; });
  }

  int SendAll() {
    int taken = 0;
    for (int i = 0; i < fOrder.count; ++i) taken += Send(i) == B_OK;
    return taken;
  }

private:
  size_t Below(size_t bound) { return std::uniform_int_distribution<size_t>(0, bound - 1)(fRandom); }
  int32 Number() { return Below(2) == 0 ? static_cast<int32>(Below(100)) : static_cast<int32>(fRandom()); }
  const std::string& Name() { return fNames[Below(fNames.size())]; }
  std::string Text() {
    std::string text = Below(2) == 0 ? Name() : std::string(Below(3000), '\0');
    if (text[0] == '\0') std::ranges::generate(text, [this] { return static_cast<char>(fRandom()); });
    return text;
  }

  void AddField(BMessage* message, int depth) {
    const char* const name = Name().c_str();
    const auto decimal = static_cast<float>(Number());
    const double real = decimal;
    const std::string text = Text();
    const entry_ref ref;
    BMessage inner(static_cast<uint32>(fRandom()));
    const std::function<void()> kinds[] = {
        [&] { message->AddBool(name, Below(2) == 0); },
        [&] { message->AddInt32(name, Number()); },
        [&] { message->AddInt64(name, int64{Number()} << Below(32)); },
        [&] { message->AddFloat(name, decimal); },
        [&] { message->AddData(name, B_DOUBLE_TYPE, &real, sizeof real); },
        [&] {
          message->AddPoint(name, {decimal, decimal});
        },
        [&] {
          message->AddRect(name, {decimal, 0, 10, decimal});
        },
        [&] { message->AddData(name, B_RAW_TYPE, text.data(), text.size(), Below(2) == 0); },
        [&] { message->AddMessage(name, &inner); },
        [&] { message->AddRef(name, &ref); },
        [&] { message->AddString(name, text); },
    };
    const size_t kind = Below(std::size(kinds));
    if (kind == 8 && depth < 3) AddField(&inner, depth + 1);
    kinds[kind]();
  }

  BMessage Letter(int i) {
    BMessage message(code_of(fCodes[static_cast<size_t>(i) % fCodes.size()]));
    for (size_t fields = Below(6); fields > 0; --fields) AddField(&message, 0);
    return message;
  }

  /** First every code to every signature, waiting for each answer. Then at random, without waiting: a question to a
      signature, or a letter to a looper by number through the port of a signature or of the process. */
  status_t Send(int i) {
    const BMessage message = Letter(i);
    const size_t round = static_cast<size_t>(i) / fCodes.size();
    const bool isFirst = round < fOrder.signatures.size();
    const std::string& signature = fOrder.signatures[isFirst ? round : Below(fOrder.signatures.size())];
    if (isFirst || Below(2) == 0) {
      BMessage answer;
      const status_t status =
          BMessenger(signature.c_str()).SendMessage(&message, &answer, kPatienceUs, isFirst ? kPatienceUs : 0);
      return answer.what == B_MESSAGE_NOT_UNDERSTOOD ? status_t{B_PERMISSION_DENIED} : status;
    }
    std::string port = "app:" + signature;
    port.replace(port.find('/'), 1, "%2F");
    if (Below(3) == 0) port = "re:" + fOrder.process;
    LetterHead head{Below(2000), Below(2) * Below(2000), {}};
    if (Below(4) == 0) head.replyTo = {Below(2) == 0 ? "re:" + fOrder.process : Name(), Below(400), Below(400)};
    const std::vector<char> bytes = letter_bytes(head, message);
    return write_port_etc(find_port(port.c_str()), 'LETR', bytes.data(), bytes.size(), kPatienceUs);
  }

  static constexpr bigtime_t kPatienceUs = 5000000;
  const HostileLetters& fOrder;
  std::mt19937 fRandom;
  const std::vector<std::string> fCodes;
  std::vector<std::string> fNames;
};

} // namespace

int send_hostile_letters(const HostileLetters& letters) {
  return Writer(letters).SendAll();
}
