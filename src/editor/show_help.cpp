#include "editor/show_help.h"

#include "family/plugin_image.h"
#include "language/llt.h"
#include "platform/app/roster.h"
#include "platform/storage/entry.h"
#include "toolkit/alerts.h"

std::string vesmo_editor_fname() {
  return image_path_with("gen_VesmoE");
}

void show_help() {
  const std::string plugin = vesmo_editor_fname();
  const std::string path = plugin.substr(0, plugin.rfind('/') + 1) + "VesmoE.htm";
  const BEntry entry(path.c_str());
  entry_ref ref;
  const bool isThere = entry.IsFile() && entry.GetRef(&ref) == B_OK;
  const status_t status = isThere ? be_roster->Launch(&ref) : B_ENTRY_NOT_FOUND;
  if (status == B_OK || status == B_ALREADY_RUNNING) return;
  koreva::post_msg("ヘルプを表示できません：\n" + path, gLLT->Text("Alert_Caption"), {"ＯＫ", 0, true}, "");
}
