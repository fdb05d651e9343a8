#pragma once

#include "commands/command_table.h"
#include "common/archivable.h"

#include <array>
#include <memory>
#include <mutex>
#include <string>

/** The keys of all commands, as in key_names.h; empty for none. */
class TKeys {
public:
  /** The defaults. */
  TKeys();

  const std::string& Of(TCommandId id) const { return fKeys[static_cast<size_t>(id)]; }
  bool IsDefault(TCommandId id) const { return Of(id) == command(id).keys; }
  /** Does not look for conflicts. */
  void Set(TCommandId id, const std::string& keys) { fKeys[static_cast<size_t>(id)] = keys; }
  /** Another command that has these keys; nothing for no keys. */
  std::optional<TCommandId> OtherWith(const std::string& keys, TCommandId id) const;
  /** Gives changed commands their default again until no two have the same keys. */
  void ResolveConflicts();

  friend bool operator==(const TKeys&, const TKeys&) = default;

private:
  std::array<std::string, kCommands> fKeys;
};

/** The user's keys, stored in "Vesmo_Keys.arc": a string for each changed command, by its name. A message with these
    fields also replaces them while the program runs. Thread-safe: `Values` returns an immutable snapshot. */
class TKeyBindings : public koreva::TArchivable {
public:
  TKeyBindings();
  TKeyBindings(const TKeyBindings&) = delete;
  TKeyBindings& operator=(const TKeyBindings&) = delete;

  std::shared_ptr<const TKeys> Values() const;
  void SetValues(const TKeys& keys);

  bool Archive(BMessage* archive) override;
  /** Absent commands get their default. Keys that are invalid, reserved or taken are ignored. */
  bool Unarchive(const BMessage& archive) override;

private:
  mutable std::mutex fMutex; // guards fValues
  std::shared_ptr<const TKeys> fValues;
};

/** Null until the plug-in is constructed. */
extern TKeyBindings* gKeyBindings;

/** The current keys; the defaults while gKeyBindings is null. */
std::shared_ptr<const TKeys> current_keys();
/** From and to the settings folder; false when there is nothing to load, or after a logged error. */
bool load_key_bindings();
bool save_key_bindings();
