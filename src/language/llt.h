#pragma once

#include "platform/support/types.h"

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>

class BResources;
class TIniFile;

/** The texts of one language by key. Any thread may look texts up while another loads or assigns: a load makes a new
    table and puts it in the old one's place. A text that was handed out stays good. */
class TLLT {
public:
  using TMap = std::map<std::string, std::string>;

  TLLT();
  TLLT(const TLLT& other);
  TLLT& operator=(const TLLT& other);

  /** Each adds to what is there; 0 on success, -1 (and nothing changed) without the right header.
      `resources` null: those of this program. */
  int32 Load(const char* path);
  int32 Load(const BResources* resources, int32 id);
  int32 Load(TIniFile* file);

  /** "! ERROR !" for a missing key; never null. */
  const char* Text(const char* key) const;
  std::string LanguageName() const { return Snapshot()->language; }
  std::string Writer() const { return Snapshot()->writer; }
  std::string SpecialThanks() const { return Snapshot()->specialThanks; }
  std::shared_ptr<const TMap> TextMap() const;

  /** On: a missing key is also shown by `ShowMissingKey`. A debugging aid. */
  void SET_SHOW_DB_INFO(bool show) { fShowMissing = show; }
  /** How an alert titled "TLLT::Text" with the key and the button "OK" is shown; set by those who have windows. */
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

  mutable std::mutex fMutex; // guards the table
  std::shared_ptr<const TTable> fTable;
  std::atomic<bool> fShowMissing{false};
};

/** The texts of the running program; null before start. */
extern TLLT* gLLT;
