#include "player/texts/chosen_language.h"

#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/storage/directory.h"
#include "platform/storage/path.h"
#include "plugin/kept_record.h"

#include <cstdlib>
#include <optional>

namespace {

/** The one field of the plug-ins' shared settings that concerns the player. */
struct TLanguageChoice : koreva::TArchivable {
  std::optional<std::string> file;
  bool Unarchive(const BMessage& archive) override {
    std::string found;
    if (archive.FindString("LLTF", &found) == B_OK) file = found;
    return true;
  }
};

/** The file in the folder whose texts are in that language; empty for none. */
std::string file_of_language(const std::string& folder, const std::string& language) {
  BDirectory directory(folder.c_str());
  BEntry entry;
  while (directory.GetNextEntry(&entry, true) == B_OK) {
    BPath path;
    TLLT texts;
    if (entry.GetPath(&path) != B_OK || !std::string_view(path.Path()).ends_with(".llt")) continue;
    if (texts.Load(path.Path()) == 0 && texts.Text("Locale") == language) return path.Path();
  }
  return {};
}

} // namespace

std::string desktop_language() {
  for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const value = std::getenv(name);
    if (value == nullptr || *value == '\0') continue;
    const std::string_view locale = value;
    const std::string language(locale.substr(0, locale.find_first_of("_.@")));
    return language == "C" || language == "POSIX" || language == "en" ? std::string() : language;
  }
  return {};
}

std::string named_language_file(const std::string& folder, const std::string& path) {
  const std::string name = path.substr(path.rfind('/') + 1);
  return name.empty() ? std::string() : folder + "/" + name;
}

std::string chosen_language_file(const std::string& folder) {
  TLanguageChoice choice;
  load_record(&choice, "Shared", "VesmoShared_Prefs.arc");
  if (!choice.file) {
    const std::string language = desktop_language();
    return language.empty() ? std::string() : file_of_language(folder, language);
  }
  return named_language_file(folder, *choice.file);
}
