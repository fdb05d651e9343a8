#pragma once

#include "platform/support/types.h"

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>

class BResources;
class TIniFile;

/** The texts of one language by key. Thread-safe: loading and assigning replace the whole table. Returned texts stay
    valid until the program ends. */
class TLLT {
public:
  using TMap = std::map<std::string, std::string>;

  TLLT();
  TLLT(const TLLT& other);
  TLLT& operator=(const TLLT& other);

  /** Add to the current texts. 0 on success; -1, with nothing changed, without the right header. `resources` null:
      those of this program. */
  int32 Load(const char* path);
  int32 Load(const BResources* resources, int32 id);
  int32 Load(TIniFile* file);

  /** "! ERROR !" for a missing key; never null. */
  const char* Text(const char* key) const;
  std::string LanguageName() const { return Snapshot()->language; }
  std::string Writer() const { return Snapshot()->writer; }
  std::string SpecialThanks() const { return Snapshot()->specialThanks; }
  std::shared_ptr<const TMap> TextMap() const;

  /** True: missing keys are also shown in an alert, for debugging. */
  void SET_SHOW_DB_INFO(bool show) { fShowMissing = show; }
  /** The callback that shows an alert titled "TLLT::Text" with the key and the button "OK"; set by programs with
      windows. */
  static void SetMissingKeyAlert(void (*show)(const char* title, const char* key, const char* button));

private:
  struct TTable {
    TMap texts;
    std::string language;
    std::string writer;
    std::string specialThanks;
  };

  std::shared_ptr<const TTable> Snapshot() const;
  void Replace(std::shared_ptr<const TTable> table);

  mutable std::mutex fMutex; // guards fTable
  std::shared_ptr<const TTable> fTable;
  std::atomic<bool> fShowMissing{false};
};

/** The texts of the running program; null until the plug-in is constructed. */
extern TLLT* gLLT;
