#pragma once

#include "lyrics/export.h"
#include "lyrics/lyrics_form.h"

#include <optional>
#include <string>
#include <vector>

enum class TCommand { kInfo, kShift, kConvert, kStrip, kEncode, kCheck, kExport, kExtract, kEmbed };
enum class TReportFormat { kText, kTable, kJson };

/** The parsed command line. */
struct TOptions {
  TCommand command = TCommand::kInfo;
  std::vector<std::string> paths; // files, folders, "-"

  long shiftMs = 0;
  bool toExtended = false;
  std::optional<TDialect> toDialect; // of convert, in place of a form
  std::optional<TEncoding> toEncoding;
  std::optional<TLineEnd> toLineEnd;
  TExportFormat exportFormat = TExportFormat::kDotted;

  std::optional<TEncoding> readEncoding; // none: detect
  std::optional<long> songLengthMs;
  TReportFormat reportFormat = TReportFormat::kText;
  std::string output;      // file, folder, or empty
  std::string lyrics;      // embed: the file to take; empty: the one next to each song
  bool likeEditor = false; // treat every line that begins with a bracket as tagged
  bool overwrites = false;
  bool isDryRun = false;
  bool isQuiet = false;
  unsigned threads = 0; // 0: one per core

  bool IsAboutSongs() const { return command == TCommand::kExtract || command == TCommand::kEmbed; }
  /** Writes copies to other paths. */
  bool WritesCopies() const { return command == TCommand::kExport || command == TCommand::kExtract; }
  bool ChangesFiles() const {
    return command == TCommand::kShift || command == TCommand::kConvert || command == TCommand::kStrip ||
           command == TCommand::kEncode;
  }
};

/** Exit codes. */
enum TExitCode { kExitFine = 0, kExitFindings = 1, kExitUsage = 2 };
