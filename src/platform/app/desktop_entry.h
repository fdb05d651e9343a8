#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** The keys of a *.desktop file that concern launching its program. */
struct DesktopEntry {
  /** The key X-KOREVA-Signature; empty when there is none. */
  std::string signature;
  /** The key Hidden: the user has deleted the entry. */
  bool isHidden = false;
  /** The key Exec as an argument vector, unquoted and without its field codes. */
  std::vector<std::string> arguments;
};

/** Parses the group [Desktop Entry] as freedesktop.org specifies it. nullopt unless it describes an application with a
    well-formed Exec. A hidden entry needs neither. Pure: any thread. */
std::optional<DesktopEntry> parse_desktop_entry(std::string_view text);
