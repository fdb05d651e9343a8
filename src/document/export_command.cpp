#include "document/export_command.h"

#include "common/atomic_replace.h"
#include "common/koreva.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/document.h"
#include "lyrics/export.h"
#include "platform/app/message.h"

#include <filesystem>

namespace {

/** Also when a link makes it a different name. */
bool is_same_file(const entry_ref& a, const entry_ref& b) {
  std::error_code error;
  return a == b || std::filesystem::equivalent(a.FullPath(), b.FullPath(), error);
}

std::nullopt_t refuse(const std::string& text) {
  tell(text);
  return std::nullopt;
}

} // namespace

std::optional<std::string> export_document(const TDocument& document, const BMessage& answer) {
  entry_ref file;
  int32 number = -1;
  koreva::get_save_ref(&answer, &file);
  const bool hasFormat = answer.FindInt32("Format", &number) == B_OK && number >= 0 && number < kExportFormats;
  if (!hasFormat || file.IsEmpty() || file.directory.empty()) return {};
  if (!document.File().IsEmpty() && is_same_file(file, document.File()))
    return refuse(gLLT->Text("Err_Export_Over_Document"));
  const auto format = static_cast<TExportFormat>(number);
  const std::optional<TExported> exported = export_lyrics(document.CopyLines(), format);
  const bool needsWords = format == TExportFormat::kEnhanced;
  if (!exported) return refuse(gLLT->Text(needsWords ? "Err_No_Word_Tags" : "Err_No_Tags_To_Export"));
  const std::string path = file.FullPath();
  if (atomic_replace(path, exported->bytes) != B_OK || !file_holds(path, exported->bytes))
    return refuse(gLLT->Text("Err_Cannot_Export") + ("\n" + path));
  std::string report = gLLT->Text("StatBarStr_Exported") + file.name;
  if (exported->linesLeftOut > 0)
    report += gLLT->Text("StatBarStr_Exported_Without") + std::to_string(exported->linesLeftOut);
  return report;
}
