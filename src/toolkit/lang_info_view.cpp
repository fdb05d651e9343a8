#include "toolkit/lang_info_view.h"

#include "language/llt.h"
#include "language/load_language.h"

namespace {

constexpr BPoint kSize{520, 340};
/** Em spaces: of similar width in every font, unlike spaces. */
constexpr const char* kIndent = "\u2003\u2003";

std::string line(const char* key, const std::string& text) {
  return text.empty() ? std::string() : std::string(kIndent) + gLLT->Text(key) + text + "\n";
}

std::string paragraph(const std::string& name, const TLLT& table, const std::string& file, bool isUsed) {
  const std::string mark = isUsed ? std::string("● ") : "○ ";
  const std::string used = isUsed ? std::string(gLLT->Text("About_Lang_In_Use")) : "";
  return mark + name + used + "\n" + line("About_Lang_Writer", table.Writer()) +
         line("About_Lang_Thanks", table.SpecialThanks()) + line("About_Lang_File", file);
}

std::string file_name(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

} // namespace

TLangInfoView::TLangInfoView() : BTextView({}, "LangInfo", B_FOLLOW_ALL_SIDES) {
  MakeEditable(false);
}

void TLangInfoView::List(const std::string& folder, const std::string& usedFile) {
  std::string text;
  if (usedFile.empty()) text = paragraph(gLLT->LanguageName(), *gLLT, gLLT->Text("About_Lang_Built_In"), true);
  std::map<std::string, std::string> files;
  get_lang_files(folder.c_str(), &files);
  for (const auto& [name, path] : files) {
    TLLT table;
    table.Load(path.c_str());
    if (!text.empty()) text += "\n";
    text += paragraph(name, table, file_name(path), file_name(path) == file_name(usedFile));
  }
  SetText(text);
}

BPoint TLangInfoView::PreferredSize() {
  return kSize;
}
