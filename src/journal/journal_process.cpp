#include "journal/journal_process.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <sstream>

namespace {

std::string text_of(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

/** Field 22 of /proc/PROCESS/stat; the second field is the program's name in parentheses, which may contain blanks. */
uint64 start_ticks(const std::string& process) {
  constexpr int kFieldsBefore = 19; // between the parenthesis and the field
  const std::string text = text_of("/proc/" + process + "/stat");
  const size_t end = text.rfind(')');
  if (end == std::string::npos) return 0;
  std::istringstream fields(text.substr(end + 1));
  std::string skipped;
  for (int i = 0; i < kFieldsBefore; ++i) fields >> skipped;
  uint64 ticks = 0;
  fields >> ticks;
  return ticks;
}

std::string boot_id() {
  std::string id = text_of("/proc/sys/kernel/random/boot_id");
  while (!id.empty() && id.back() == '\n') id.pop_back();
  return id;
}

} // namespace

TJournalProcess this_process() {
  return {static_cast<int32>(getpid()), start_ticks("self"), boot_id()};
}

bool is_running(const TJournalProcess& process) {
  return process.id > 0 && process.bootId == boot_id() && process.startTicks == start_ticks(std::to_string(process.id));
}
