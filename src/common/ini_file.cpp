#include "common/ini_file.h"

#include "platform/storage/directory.h"
#include "platform/storage/entry.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr const char* kGlobalSection = "_TIniF_GlobalSec";
constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
constexpr size_t kAheadSize = 16384;

char to_upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool names_match(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return to_upper(x) == to_upper(y); });
}

std::string_view trimmed(std::string_view text) {
  const size_t start = text.find_first_not_of(kWhiteSpace);
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(kWhiteSpace) - start + 1);
}

TIniFilePair parsed_pair(std::string_view line) {
  const size_t equals = line.find('=');
  if (equals == std::string_view::npos) return {"", std::string(trimmed(line))};
  return {std::string(trimmed(line.substr(0, equals))), std::string(trimmed(line.substr(equals + 1)))};
}

std::string parsed_header(std::string_view line) {
  const size_t end = line.find(']');
  return end == std::string_view::npos ? std::string() : std::string(trimmed(line.substr(1, end - 1)));
}

} // namespace

TIniFilePair* TIniFileSection::Find(std::string_view key) {
  const auto found = std::find_if(pairs.begin(), pairs.end(), [&](const auto& p) { return names_match(p.key, key); });
  return found == pairs.end() ? nullptr : &*found;
}

TIniFile::TIniFile(int lineLength) : fLineLength(lineLength) {}
TIniFile::TIniFile(const entry_ref* ref, uint32 openMode, int lineLength) : TIniFile(lineLength) {
  Attach(fFile.SetTo(ref, openMode), lineLength);
}
TIniFile::TIniFile(const BEntry* entry, uint32 openMode, int lineLength) : TIniFile(lineLength) {
  Attach(fFile.SetTo(entry, openMode), lineLength);
}
TIniFile::TIniFile(const char* path, uint32 openMode, int lineLength) : TIniFile(lineLength) {
  Attach(fFile.SetTo(path, openMode), lineLength);
}
TIniFile::TIniFile(const BDirectory* directory, const char* name, uint32 openMode, int lineLength)
    : TIniFile(lineLength) {
  Attach(fFile.SetTo(directory, name, openMode), lineLength);
}
TIniFile::TIniFile(BPositionIO* stream, int lineLength) : TIniFile(lineLength) {
  fStream = stream;
  Init(lineLength);
  Load();
}

TIniFile::~TIniFile() {
  TIniFile::Flush(false);
}

void TIniFile::Init(int lineLength) {
  fLineLength = lineLength;
  fDirty = false;
}

status_t TIniFile::Attach(status_t opened, int lineLength) {
  Init(lineLength);
  if (opened != B_OK) return opened;
  fStream = &fFile;
  Load();
  return B_OK;
}

status_t TIniFile::SetTo(const entry_ref* ref, uint32 openMode, int lineLength) {
  Unset();
  return Attach(fFile.SetTo(ref, openMode), lineLength);
}
status_t TIniFile::SetTo(const BEntry* entry, uint32 openMode, int lineLength) {
  Unset();
  return Attach(fFile.SetTo(entry, openMode), lineLength);
}
status_t TIniFile::SetTo(const char* path, uint32 openMode, int lineLength) {
  Unset();
  return Attach(fFile.SetTo(path, openMode), lineLength);
}
status_t TIniFile::SetTo(const BDirectory* directory, const char* name, uint32 openMode, int lineLength) {
  Unset();
  return Attach(fFile.SetTo(directory, name, openMode), lineLength);
}
status_t TIniFile::SetTo(BPositionIO* stream, int lineLength) {
  Unset();
  fStream = stream;
  Init(lineLength);
  Load();
  return B_OK;
}

void TIniFile::Unset() {
  Flush(false);
  DestroyVar();
  fFile.Unset();
  fStream = nullptr;
}

void TIniFile::DestroyVar() {
  fCurrent = nullptr;
  while (!fSections.empty()) fSections.pop_back();
}

bool TIniFile::FillBuffer() {
  if (fAheadPosition < fAhead.size()) return true;
  fAhead.resize(kAheadSize);
  const ssize_t count = fStream->Read(fAhead.data(), fAhead.size());
  fAhead.resize(count > 0 ? static_cast<size_t>(count) : 0);
  fAheadPosition = 0;
  return !fAhead.empty();
}

int TIniFile::ReadLine(char* line, int size) {
  int taken = 0;
  int length = 0;
  while (length < size - 1 && FillBuffer()) {
    const char byte = fAhead[fAheadPosition++];
    ++taken;
    if (byte == '\n') {
      if (length > 0 && line[length - 1] == '\r') --length;
      break;
    }
    line[length++] = byte;
  }
  line[length] = '\0';
  return taken;
}

void TIniFile::LoadLine(const char* text, TIniFileSection** receiving) {
  std::string_view line = text;
  line.remove_prefix(std::min(line.find_first_not_of(kWhiteSpace), line.size()));
  if (line.empty()) return;
  if (line.front() == ';') {
    (*receiving)->comments.append(trimmed(line.substr(1))).append("\n");
  } else if (line.front() == '[') {
    *receiving = CreateSection(parsed_header(line).c_str(), -1);
  } else {
    (*receiving)->pairs.push_back(parsed_pair(line));
  }
}

void TIniFile::Load() {
  if (fStream == &fFile && fFile.IsDirectory()) return;
  TIniFileSection* receiving = CreateSection(kGlobalSection, -1);
  fCurrent = receiving;
  if (fStream->Seek(0, SEEK_SET) != 0) return;
  fAhead.clear();
  fAheadPosition = 0;
  std::vector<char> line(static_cast<size_t>(fLineLength) + 1);
  while (ReadLine(line.data(), static_cast<int>(line.size())) > 0) LoadLine(line.data(), &receiving);
  fDirty = false;
}

TIniFileSection* TIniFile::CreateSection(const char* name, int index) {
  auto section = std::make_unique<TIniFileSection>();
  section->name = Cut(name);
  const bool atEnd = index < 0 || index >= static_cast<int>(fSections.size());
  return fSections.insert(atEnd ? fSections.end() : std::next(fSections.begin(), index), std::move(section))->get();
}

TIniFileSection* TIniFile::FindSection(const char* name) {
  const std::string wanted = Cut(name); // truncated like the stored names
  for (const auto& section : fSections) {
    if (names_match(section->name, wanted)) return section.get();
  }
  return nullptr;
}

std::string TIniFile::Cut(const char* text) const {
  return std::string(text, strnlen(text, static_cast<size_t>(fLineLength)));
}

TIniFilePair* TIniFile::FindPair(const char* key) {
  return fCurrent ? fCurrent->Find(Cut(key)) : nullptr;
}

bool TIniFile::ChangeSection(const char* name) {
  fCurrent = FindSection(name);
  if (fCurrent == nullptr) fCurrent = CreateSection(name, -1);
  return true;
}

bool TIniFile::SectionExists(const char* name) {
  return FindSection(name) != nullptr;
}

bool TIniFile::DeleteSection(const char* name) {
  TIniFileSection* const found = FindSection(name);
  if (found == nullptr) return false;
  const bool wasCurrent = found == fCurrent || (fCurrent && fCurrent->name == name);
  fSections.remove_if([&](const auto& section) { return section.get() == found; });
  if (std::strcmp(name, kGlobalSection) == 0) CreateSection(kGlobalSection, 0);
  if (wasCurrent) fCurrent = fSections.empty() ? nullptr : fSections.front().get();
  fDirty = true;
  return true;
}

bool TIniFile::KeyExists(const char* key) {
  return FindPair(key) != nullptr;
}

bool TIniFile::DeleteKey(const char* key) {
  const TIniFilePair* const pair = FindPair(key);
  if (pair == nullptr) return false;
  fCurrent->pairs.erase(fCurrent->pairs.begin() + (pair - fCurrent->pairs.data()));
  fDirty = true;
  return true;
}

int32 TIniFile::EnumSections(BList* sections) {
  for (const auto& section : fSections) sections->AddItem(section->name.data());
  return static_cast<int32>(fSections.size());
}

int32 TIniFile::EnumKeys(BList* keys) {
  if (fCurrent == nullptr) return 0;
  for (TIniFilePair& pair : fCurrent->pairs) keys->AddItem(pair.key.data());
  return static_cast<int32>(fCurrent->pairs.size());
}

bool TIniFile::ReadComment(char* text) {
  if (fCurrent == nullptr) return false;
  const auto start = static_cast<size_t>(fCurrent->commentCursor);
  const size_t end = fCurrent->comments.find('\n', start);
  if (end == std::string::npos) return false;
  const std::string comment = Cut(fCurrent->comments.substr(start, end - start).c_str());
  std::memcpy(text, comment.c_str(), comment.size() + 1);
  fCurrent->commentCursor = static_cast<int32>(end + 1);
  return true;
}

void TIniFile::WriteComment(const char* text) {
  if (fCurrent == nullptr) return;
  fCurrent->comments.append(Cut(text)).append("\n");
  fDirty = true;
}

bool TIniFile::WriteLine(std::string line) {
  line += '\n';
  return fStream->Write(line.data(), line.size()) == static_cast<ssize_t>(line.size());
}

bool TIniFile::Flush(bool force) {
  if (fStream == nullptr || (!fDirty && !force)) return false;
  bool isWritten = fStream->Seek(0, SEEK_SET) == 0;
  for (const auto& section : fSections) {
    if (section->name != kGlobalSection) isWritten &= WriteLine("[ " + section->name + " ]");
    section->commentCursor = 0;
    for (size_t start = 0, end = 0; (end = section->comments.find('\n', start)) != std::string::npos; start = end + 1) {
      isWritten &= WriteLine("; " + section->comments.substr(start, end - start));
    }
    for (const TIniFilePair& pair : section->pairs) isWritten &= WriteLine(pair.key + " = " + pair.value);
    isWritten &= WriteLine("");
  }
  fDirty = !isWritten;
  return isWritten;
}
