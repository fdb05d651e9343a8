#include "language/load_language.h"

#include "common/app_info.h"
#include "language/builtin_texts.h"
#include "language/llt.h"
#include "platform/kernel/threads.h"
#include "platform/storage/directory.h"
#include "platform/storage/path.h"
#include "platform/support/log.h"
#include "platform/support/reported_once.h"
#include "plugin/app_privacy.h"
#include "plugin/pref.h"

#include <atomic>

namespace {

constexpr int kTries = 10;
constexpr bigtime_t kPauseUs = 20000;

std::atomic<void (*)(const char*, const char*, const char*)> gShowFailure{nullptr};

/** Only the file name of the setting counts: language files are next to the plug-in. */
std::string language_path(const std::string& pluginPath, const std::string& stored) {
  return language_folder(pluginPath) + "/" + stored.substr(stored.rfind('/') + 1);
}

bool load_with_patience(const std::string& path, TLLT* texts) {
  for (int i = 0; i < kTries; ++i) {
    if (texts->Load(path.c_str()) == 0) return true;
    snooze(kPauseUs);
  }
  return false;
}

/** Both plug-ins load the same file: only the first reports an error. */
constexpr const char* kFailureKind = "language file";

void show_failure(const std::string& path) {
  if (!should_report(kFailureKind, path)) return;
  const std::string text = "Can't load language file:\n" + path;
  std::string caption = "* ";
  caption.append(gAppName).append(" *");
  const auto show = gShowFailure.load();
  if (show) return show(text.c_str(), caption.c_str(), "U - Understand");
  log_error(gAppName, text);
}

} // namespace

std::string language_folder(const std::string& pluginPath) {
  return pluginPath.substr(0, pluginPath.rfind('/') + 1) + "Language";
}

void set_language_alert(void (*show)(const char*, const char*, const char*)) {
  gShowFailure = show;
}

bool load_language(const char* pluginPath) {
  // Replaced as a whole: until then windows get the previous texts.
  TLLT texts;
  TPrefValues values = *gPref->Values();
  if (values.languageFile.empty()) {
    const BResources builtIn = builtin_resources();
    texts.Load(&builtIn, kBuiltinTextsId);
    *gLLT = texts;
    if (gAppPrivacy) gAppPrivacy->UpdateLanguageInfos();
  } else {
    values.languageFile = language_path(pluginPath, values.languageFile);
    gPref->SetValues(values);
    // Before reading, so that a later write to the file counts as a change.
    if (gAppPrivacy) gAppPrivacy->UpdateLanguageInfos();
    const bool isLoaded = load_with_patience(values.languageFile, &texts);
    *gLLT = texts;
    isLoaded ? forget_reported(kFailureKind) : show_failure(values.languageFile);
  }
  return true;
}

void get_lang_files(const char* folder, std::map<std::string, std::string>* files) {
  BDirectory directory(folder);
  BEntry entry;
  TLLT table; // reused: a file without a language name gets that of the previous file
  while (directory.GetNextEntry(&entry, true) == B_OK) {
    BPath path;
    if (entry.GetPath(&path) != B_OK) continue;
    const std::string name = path.Path();
    // Required: the first "llt" in the whole path must be at its end.
    if (name.size() < 3 || name.find("llt") != name.size() - 3) continue;
    if (table.Load(path.Path()) == 0) (*files)[table.LanguageName()] = name;
  }
}
