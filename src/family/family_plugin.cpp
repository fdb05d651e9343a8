#include "family/family_plugin.h"

#include "family/family_comm_man.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "plugin/kept_record.h"
#include "plugin/message_codes.h"

#include <cstring>
#include <stdexcept>
#include <utility>

namespace {

constexpr const char* kCredit = "by the Vesmo Editor team";

std::unique_ptr<char[]> heap_copy(const std::string& text) {
  auto copy = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(copy.get(), text.c_str(), text.size() + 1);
  return copy;
}

} // namespace

TFamilyPlugin::TFamilyPlugin(const std::string& name)
    : fNameText(heap_copy(name)), fInfoText(heap_copy(name + "  " + kCredit)) {
  fName = fNameText.get();
  fInfo = fInfoText.get();
}

void TFamilyPlugin::StartManager(TFamilyCommMan* manager) {
  if (manager->Run() < 0) {
    if (manager->Lock()) manager->Quit();
    throw std::runtime_error("no thread for its manager");
  }
  fCommMan = manager;
}

void TFamilyPlugin::EndManager() {
  if (fCommMan->Lock()) std::exchange(fCommMan, nullptr)->Quit();
}

void TFamilyPlugin::EndSettings(bool isSaved) {
  constexpr bigtime_t kPatienceUs = 5000000; // the user may be absent
  if (!isSaved && !are_settings_held_off()) tell_for(kPatienceUs, gLLT->Text("Err_Settings_Not_Saved"));
}

bool TFamilyPlugin::About(bool query) {
  if (!query) fCommMan->PostMessage(kMsgPrepareAbout);
  return true;
}

bool TFamilyPlugin::Prefs(bool query) {
  if (!query) fCommMan->PostMessage(kMsgPreparePref);
  return true;
}
