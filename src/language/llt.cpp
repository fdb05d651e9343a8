#include "language/llt.h"

#include "common/ini_file.h"
#include "language/builtin_texts.h"
#include "language/text_escapes.h"
#include "platform/storage/entry.h"
#include "platform/storage/resources.h"
#include "platform/support/data_io.h"

#include <atomic>
#include <unordered_set>
#include <utility>
#include <vector>

TLLT* gLLT = nullptr;

namespace {

constexpr int kLineLength = 2048;
/** Bytes; far more than any language file has. */
constexpr off_t kMaxFileSize = off_t{1} << 20;
constexpr const char* kHeader = "LLT File Format 100";
constexpr const char* kMissingText = "! ERROR !";

std::atomic<void (*)(const char*, const char*, const char*)> gMissingKeyAlert{nullptr};

/** Interns each text that was ever returned, until the program ends, since callers may hold the pointer for any time.
    Bounded: loading the same language again adds nothing. */
const char* kept_copy(const std::string& text) {
  static std::mutex mutex;
  static std::unordered_set<std::string> texts;
  const std::lock_guard lock(mutex);
  return texts.insert(text).first->c_str();
}

/** False for folders and devices, some of which could be read without end. */
bool can_be_language_file(const char* path) {
  const BEntry file(path, true);
  off_t size = 0;
  return file.IsFile() && file.GetSize(&size) == B_OK && size <= kMaxFileSize;
}

bool has_right_header(TIniFile* file, std::vector<char>* buffer) {
  file->ChangeSection("Informations");
  return file->ReadValue("Header", buffer->data()) && std::string_view(buffer->data()) == kHeader;
}

void read_into(TIniFile* file, const char* key, std::vector<char>* buffer, std::string* text) {
  if (file->ReadValue(key, buffer->data())) *text = buffer->data();
}

} // namespace

TLLT::TLLT() : fTable(std::make_shared<TTable>()) {}
TLLT::TLLT(const TLLT& other) : fTable(other.Snapshot()), fShowMissing(other.fShowMissing.load()) {}

TLLT& TLLT::operator=(const TLLT& other) {
  if (this == &other) return *this;
  Replace(other.Snapshot());
  fShowMissing = other.fShowMissing.load();
  return *this;
}

std::shared_ptr<const TLLT::TTable> TLLT::Snapshot() const {
  const std::lock_guard lock(fMutex);
  return fTable;
}

void TLLT::Replace(std::shared_ptr<const TTable> table) {
  const std::lock_guard lock(fMutex);
  fTable = std::move(table);
}

int32 TLLT::Load(const char* path) {
  if (!can_be_language_file(path)) return -1;
  TIniFile file(path, B_READ_ONLY, kLineLength);
  return Load(&file);
}

int32 TLLT::Load(const BResources* resources, int32 id) {
  const BResources builtIn = builtin_resources();
  size_t size = 0;
  const void* const bytes = (resources ? resources : &builtIn)->LoadResource(B_STRING_TYPE, id, &size);
  if (bytes == nullptr) return -1;
  BMemoryIO stream(bytes, size);
  TIniFile file(&stream, kLineLength);
  return Load(&file);
}

int32 TLLT::Load(TIniFile* file) {
  std::vector<char> buffer(static_cast<size_t>(file->LineLength()) + 1);
  if (!has_right_header(file, &buffer)) return -1;
  auto table = std::make_shared<TTable>(*Snapshot());
  read_into(file, "Language", &buffer, &table->language);
  read_into(file, "Writer", &buffer, &table->writer);
  read_into(file, "SpecialThanks", &buffer, &table->specialThanks);
  file->ChangeSection("Data");
  BList keys;
  const int32 count = file->EnumKeys(&keys);
  for (int32 i = 0; i < count; ++i) {
    const char* const key = static_cast<const char*>(keys.ItemAt(i));
    std::string& text = table->texts[key];
    read_into(file, key, &buffer, &text);
    decode_escapes(&text);
  }
  resolve_references(&table->texts);
  Replace(std::move(table));
  return 0;
}

const char* TLLT::Text(const char* key) const {
  const auto table = Snapshot();
  const auto found = table->texts.find(key);
  if (found != table->texts.end()) return kept_copy(found->second);
  const auto show = gMissingKeyAlert.load();
  if (fShowMissing && show) show("TLLT::Text", key, "OK");
  return kMissingText;
}

std::shared_ptr<const TLLT::TMap> TLLT::TextMap() const {
  const auto table = Snapshot();
  return {table, &table->texts};
}

void TLLT::SetMissingKeyAlert(void (*show)(const char*, const char*, const char*)) {
  gMissingKeyAlert = show;
}
