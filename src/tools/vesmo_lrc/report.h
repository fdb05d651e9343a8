#pragma once

#include "lyrics/exact_lyrics.h"
#include "tools/vesmo_lrc/check.h"
#include "tools/vesmo_lrc/options.h"

#include <string>

/** What info and check print of a file; in JSON an object, in a table whole rows. Pure: any thread. */
std::string info_report(const std::string& name, const TExactLyrics& lyrics, TReportFormat format);
std::string check_report(const std::string& name, const std::vector<TFinding>& findings, TReportFormat format);

/** What stands before the first report, between two, and behind the last. */
struct TReportFrame {
  std::string before;
  std::string between;
  std::string after;
};
TReportFrame report_frame(const TOptions& options);

/** The text with control characters shown as `\x1B`: nothing that a file or its name holds drives a terminal. */
std::string printable(const std::string& text);
