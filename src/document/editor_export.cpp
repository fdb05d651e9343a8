/** The editor view's way to write the lyrics for other programs. The document stays as it is, and unsaved if it was. */

#include "common/atomic_replace.h"
#include "common/koreva.h"
#include "document/editor_view.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/export.h"
#include "platform/app/message.h"

#include <filesystem>

namespace {

/** Also when it goes by another name, as by a link. */
bool is_same_file(const entry_ref& a, const entry_ref& b) {
  std::error_code error;
  return a == b || std::filesystem::equivalent(a.FullPath(), b.FullPath(), error);
}

} // namespace

void TVesmoEView::ExportRqtd(const BMessage& message) {
  entry_ref file;
  int32 format = -1;
  koreva::get_save_ref(&message, &file);
  const bool hasFormat = message.FindInt32("Format", &format) == B_OK && format >= 0 && format < kExportFormats;
  if (!hasFormat || file.IsEmpty() || file.directory.empty()) return;
  if (!fInfo.File.IsEmpty() && is_same_file(file, fInfo.File)) return tell(gLLT->Text("Err_Export_Over_Document"));
  fActive->FlushEdits();
  std::list<std::string> lines;
  fActive->GetLines(&lines);
  const std::optional<TExported> exported = export_lyrics(lines, static_cast<TExportFormat>(format));
  if (!exported) {
    const bool needsWords = static_cast<TExportFormat>(format) == TExportFormat::kEnhanced;
    return tell(gLLT->Text(needsWords ? "Err_No_Word_Tags" : "Err_No_Tags_To_Export"));
  }
  const std::string path = file.FullPath();
  if (atomic_replace(path, exported->bytes) != B_OK || !file_holds(path, exported->bytes)) {
    return tell(gLLT->Text("Err_Cannot_Export") + ("\n" + path));
  }
  std::string report = gLLT->Text("StatBarStr_Exported") + file.name;
  if (exported->linesLeftOut > 0) {
    report += gLLT->Text("StatBarStr_Exported_Without") + std::to_string(exported->linesLeftOut);
  }
  SetStatBarStr(report.c_str());
}
