#pragma once

#include "common/ini_strings.h"
#include "platform/storage/file.h"
#include "platform/support/geometry.h"
#include "platform/support/list.h"

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class BDirectory;
class BEntry;

struct TIniFilePair {
  std::string key;
  std::string value;
};

/** A section: comments and pairs in insertion order. */
struct TIniFileSection {
  std::string name;
  std::string comments; // each ends with a line feed
  int32 commentCursor = 0;
  std::vector<TIniFilePair> pairs;

  TIniFilePair* Find(std::string_view key);
};

/** A text file of sections, key = value pairs and comments, kept in memory while attached to a stream and written back
    as a whole. Names and keys are matched ignoring ASCII case; the first match counts. Lines, keys, values and names
    are at most `lineLength` bytes; a longer line is read as several, longer arguments are truncated. Not thread-safe.
    */
class TIniFile {
public:
  explicit TIniFile(int lineLength);
  TIniFile(const entry_ref* ref, uint32 openMode, int lineLength);
  TIniFile(const BEntry* entry, uint32 openMode, int lineLength);
  TIniFile(const char* path, uint32 openMode, int lineLength);
  TIniFile(const BDirectory* directory, const char* name, uint32 openMode, int lineLength);
  TIniFile(BPositionIO* stream, int lineLength);
  TIniFile(const TIniFile&) = delete;
  TIniFile& operator=(const TIniFile&) = delete;
  /** Flushes pending changes. */
  virtual ~TIniFile();

  /** Makes the first section of that name current, appending an empty one if necessary. Always true. */
  virtual bool ChangeSection(const char* name);
  virtual bool DeleteKey(const char* key);
  virtual bool DeleteSection(const char* name);
  /** Append `char*` owned by this object and valid until it changes. Return the counts. */
  virtual int32 EnumKeys(BList* keys);
  virtual int32 EnumSections(BList* sections);
  /** Writes everything from the stream's start; a longer old content is not truncated. False without a stream, or
      without changes unless `force`. */
  virtual bool Flush(bool force);
  virtual bool KeyExists(const char* key);
  /** Buffers hold lineLength + 1 bytes. */
  virtual bool ReadComment(char* text);
  virtual bool ReadValue(const char* key, char* value);
  virtual bool ReadValue(const char* key, bool* value);
  virtual bool ReadValue(const char* key, long* value);
  virtual bool ReadValue(const char* key, long long* value);
  virtual bool ReadValue(const char* key, float* value);
  virtual bool ReadValue(const char* key, rgb_color* value);
  virtual bool SectionExists(const char* name);
  virtual status_t SetTo(const entry_ref* ref, uint32 openMode, int lineLength);
  virtual status_t SetTo(const BEntry* entry, uint32 openMode, int lineLength);
  virtual status_t SetTo(const char* path, uint32 openMode, int lineLength);
  virtual status_t SetTo(const BDirectory* directory, const char* name, uint32 openMode, int lineLength);
  /** The stream is borrowed and must outlive the attachment. */
  virtual status_t SetTo(BPositionIO* stream, int lineLength);
  virtual void Unset();
  virtual void WriteComment(const char* text);
  virtual void WriteValue(const char* key, const char* value);
  virtual void WriteValue(const char* key, bool value);
  virtual void WriteValue(const char* key, long value);
  virtual void WriteValue(const char* key, long long value);
  virtual void WriteValue(const char* key, float value);
  virtual void WriteValue(const char* key, rgb_color value);

  /** Inserts a section at `index` (-1: at the end), even if the name exists. */
  TIniFileSection* CreateSection(const char* name, int index);
  TIniFileSection* FindSection(const char* name);
  void Init(int lineLength);
  int LineLength() const { return fLineLength; }
  void Load();
  void DestroyVar();
  /** Reads at most size - 1 bytes, up to a line end, which is consumed but not stored. Returns the bytes consumed, 0 at
      the end. */
  int ReadLine(char* line, int size);
  bool WriteLine(std::string line);

private:
  status_t Attach(status_t opened, int lineLength);
  void LoadLine(const char* line, TIniFileSection** receiving);
  TIniFilePair* FindPair(const char* key);
  std::string Cut(const char* text) const;
  bool FillBuffer();

  bool fDirty = false;
  int fLineLength;
  BFile fFile;
  BPositionIO* fStream = nullptr;
  std::list<std::unique_ptr<TIniFileSection>> fSections;
  TIniFileSection* fCurrent = nullptr;
  /** Read-ahead buffer while loading. */
  std::vector<char> fAhead;
  size_t fAheadPosition = 0;
};
