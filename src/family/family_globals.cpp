#include "family/family_globals.h"

#include "commands/key_bindings.h"
#include "common/app_info.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "language/load_language.h"
#include "platform/interface/display_language.h"
#include "plugin/app_privacy.h"
#include "plugin/pref.h"
#include "toolkit/alerts.h"

#include <cstdlib>
#include <optional>
#include <utility>

namespace {

void show_language_failure(const char* text, const char* caption, const char* button) {
  koreva::post_msg(text, caption, {button, 'U', true}, "");
}

void show_missing_key(const char* title, const char* key, const char* button) {
  koreva::show_msg(key, title, {button, 0, true}, "", koreva::kStopAlert);
}

template <typename T>
void destroy(T** object) {
  delete std::exchange(*object, nullptr);
}

} // namespace

/** Static: outlives the plug-in object. */
void make_app_privacy() {
  static std::optional<TAppPrivacy> record;
  gAppPrivacy = &record.emplace();
}

void make_settings() {
  set_language_alert(show_language_failure);
  TLLT::SetMissingKeyAlert(show_missing_key);
  gIAP = new TInterAppPrefs;
  gIAP->SetAppSignatureRef(gAppSignature);
  gIAP->AddItem(new TIAPItemAccKeyFormat);
  gIAP->AddItem(new TIAPItemFlatToolBar);
  gPref = new TPref;
  gKeyBindings = new TKeyBindings;
}

void make_texts(const std::string& pluginPath) {
  gLLT = new TLLT;
  const char* const showsMissing = std::getenv("VESMO_SHOW_DB_INFO");
  gLLT->SET_SHOW_DB_INFO(showsMissing && *showsMissing);
  load_language(pluginPath.c_str());
  set_display_language(gLLT->Text("Locale"));
}

void delete_settings_and_texts() {
  destroy(&gIAP);
  destroy(&gLLT);
  destroy(&gPref);
  destroy(&gKeyBindings);
}
