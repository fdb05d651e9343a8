#pragma once

#include "lyrics/exact_lyrics.h"
#include "tools/vesmo_lrc/check.h"
#include "tools/vesmo_lrc/options.h"

#include <string>

/** The output of info and check for a file: in JSON an object, in a table complete rows. Thread-safe. */
std::string info_report(const std::string& name, const TExactLyrics& lyrics, TReportFormat format);
std::string check_report(const std::string& name, const std::vector<TFinding>& findings, TReportFormat format);

/** Text before the first report, between two, and after the last. */
struct TReportFrame {
  std::string before;
  std::string between;
  std::string after;
};
TReportFrame report_frame(const TOptions& options);

/** The text with control characters escaped (`\x1B`), so that file contents and names cannot control the terminal. */
std::string printable(const std::string& text);
