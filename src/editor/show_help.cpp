#include "editor/show_help.h"

#include "commands/key_bindings.h"
#include "common/atomic_replace.h"
#include "common/koreva.h"
#include "editor/help_page.h"
#include "family/plugin_image.h"
#include "language/llt.h"
#include "platform/app/roster.h"
#include "platform/interface/key_text.h"
#include "platform/storage/entry.h"
#include "platform/storage/path.h"
#include "toolkit/alerts.h"

#include <fstream>
#include <iterator>

namespace {

TChangedKeys changed_keys() {
  const auto current = current_keys();
  TChangedKeys changed;
  std::vector<std::string> keys;
  for (const TEditorCommand& each : all_commands()) {
    if (current->IsDefault(each.id)) continue;
    changed.emplace_back(gLLT->Text(each.textKey), "");
    keys.push_back(current->Of(each.id));
  }
  if (keys.empty()) return changed;
  const std::vector<std::string> shown = shown_keys(keys);
  for (size_t i = 0; i < changed.size(); ++i) changed[i].second = shown[i];
  return changed;
}

/** A copy of the page in the settings folder that lists the changed keys; the page itself when none was changed, or no
    copy can be written. */
std::string page_to_show(const std::string& folder, const std::string& name) {
  const std::string original = folder + "/" + name;
  const TChangedKeys keys = changed_keys();
  BEntry entry;
  BPath copy;
  if (keys.empty() || !koreva::get_entry(name.c_str(), &entry, koreva::kSettingsDir, "VesmoE")) return original;
  std::ifstream file(original, std::ios::binary);
  const std::string page{std::istreambuf_iterator<char>(file), {}};
  if (page.empty() || entry.GetPath(&copy) != B_OK) return original;
  const std::string changed =
      help_with_keys(page, gLLT->Text("Locale"), gLLT->Text("Label_Changed_Keys"), keys, folder);
  return atomic_replace(copy.Path(), changed, TFlush::kNothing) == B_OK ? copy.Path() : original;
}

} // namespace

std::string vesmo_editor_fname() {
  return image_path_with("gen_VesmoE");
}

void show_help() {
  const std::string plugin = vesmo_editor_fname();
  const std::string path = page_to_show(plugin.substr(0, plugin.rfind('/')), "VesmoE.htm");
  const BEntry entry(path.c_str());
  entry_ref ref;
  const bool isThere = entry.IsFile() && entry.GetRef(&ref) == B_OK;
  const status_t status = isThere ? be_roster->Launch(&ref) : B_ENTRY_NOT_FOUND;
  if (status == B_OK || status == B_ALREADY_RUNNING) return;
  koreva::post_msg("ヘルプを表示できません：\n" + path, gLLT->Text("Alert_Caption"), {"ＯＫ", 0, true}, "");
}
