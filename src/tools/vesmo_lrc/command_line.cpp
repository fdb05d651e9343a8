#include "tools/vesmo_lrc/command_line.h"

#include "tools/vesmo_lrc/help.h"

#include <getopt.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string_view>

namespace {

/** A usage error. */
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

enum TOptionId {
  kDryRun = 'n',
  kOutput = 'o',
  kForce = 'f',
  kJobs = 'j',
  kQuiet = 'q',
  kHelp = 'h',
  kBy = 256,
  kTo,
  kEol,
  kFrom,
  kLikeEditor,
  kLength,
  kFormat,
  kDialect,
  kLyrics,
  kVersion,
};

const option kLongOptions[] = {{"dry-run", no_argument, nullptr, kDryRun},
                               {"output", required_argument, nullptr, kOutput},
                               {"force", no_argument, nullptr, kForce},
                               {"jobs", required_argument, nullptr, kJobs},
                               {"quiet", no_argument, nullptr, kQuiet},
                               {"help", no_argument, nullptr, kHelp},
                               {"by", required_argument, nullptr, kBy},
                               {"to", required_argument, nullptr, kTo},
                               {"eol", required_argument, nullptr, kEol},
                               {"from", required_argument, nullptr, kFrom},
                               {"like-editor", no_argument, nullptr, kLikeEditor},
                               {"length", required_argument, nullptr, kLength},
                               {"format", required_argument, nullptr, kFormat},
                               {"dialect", required_argument, nullptr, kDialect},
                               {"lyrics", required_argument, nullptr, kLyrics},
                               {"version", no_argument, nullptr, kVersion},
                               {nullptr, 0, nullptr, 0}};

struct TCommandName {
  const char* name;
  TCommand command;
  std::vector<int> options; // in addition to the common ones
};

const std::vector<TCommandName>& commands() {
  static const std::vector<TCommandName> all = {
      {"info", TCommand::kInfo, {kFormat}},
      {"check", TCommand::kCheck, {kTo, kLength, kFormat}},
      {"shift", TCommand::kShift, {kBy, kForce, kDryRun, kLikeEditor}},
      {"convert", TCommand::kConvert, {kTo, kDialect, kForce, kDryRun, kLikeEditor}},
      {"strip", TCommand::kStrip, {kForce, kDryRun, kLikeEditor}},
      {"encode", TCommand::kEncode, {kTo, kEol, kForce, kDryRun}},
      {"export", TCommand::kExport, {kTo, kOutput, kForce, kDryRun}},
      {"extract", TCommand::kExtract, {kOutput, kForce, kDryRun}},
      {"embed", TCommand::kEmbed, {kLyrics, kDryRun}},
  };
  return all;
}

const TCommandName& command_named(const std::string& name) {
  const auto found = std::find_if(commands().begin(), commands().end(),
                                  [&](const TCommandName& command) { return command.name == name; });
  if (found == commands().end()) throw UsageError("unknown command '" + name + "'");
  return *found;
}

/** The options given, in order; without an argument it is empty. */
using TGiven = std::map<int, std::string>;

std::string name_of(int id) {
  const auto* const found = std::find_if(std::begin(kLongOptions), std::end(kLongOptions),
                                         [id](const option& each) { return each.val == id; });
  return std::string("--") + found->name;
}

TGiven read_options(int argc, char** argv) {
  TGiven given;
  optind = 0; // reset, for repeated calls
  opterr = 0;
  for (int id = 0; (id = getopt_long(argc, argv, ":no:fj:qh", kLongOptions, nullptr)) != -1;) {
    const std::string word = optind > 0 ? argv[optind - 1] : "";
    if (id == ':') throw UsageError("'" + word + "' needs a value");
    if (id == '?') throw UsageError("unknown or ambiguous option '" + word + "'");
    given[id] = optarg ? optarg : "";
  }
  return given;
}

template <typename Value>
Value chosen(const TGiven& given, int id, std::initializer_list<std::pair<const char*, Value>> choices) {
  const std::string& word = given.at(id);
  std::string known;
  for (const auto& [name, value] : choices) {
    if (word == name) return value;
    known += (known.empty() ? "" : ", ") + std::string(name);
  }
  throw UsageError(name_of(id) + " must be one of " + known + ", not '" + word + "'");
}

TEncoding chosen_encoding(const TGiven& given, int id) {
  using enum TEncoding;
  return chosen<TEncoding>(
      given, id, {{"utf-8", kUtf8}, {"utf8", kUtf8}, {"sjis", kShiftJis}, {"shift-jis", kShiftJis}, {"jis", kJis}});
}

/** "250", "-1500ms", "1.5s" in ms, clamped to 32 bits like every amount. */
long amount_of(const std::string& text) {
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  const std::string_view unit = end;
  const bool isNumber = end != text.c_str() && std::isfinite(number) && (unit.empty() || unit == "ms" || unit == "s");
  const double ms = unit == "s" ? number * 1000 : number;
  if (!isNumber || (unit != "s" && std::trunc(ms) != ms)) {
    throw UsageError("--by takes an amount such as 250, -1500 or 1.5s, not '" + text + "'");
  }
  return std::lround(std::clamp(ms, -2147483647.0, 2147483647.0));
}

/** "mm:ss" or "mm:ss.cc" in ms. */
long length_of(const std::string& text) {
  const size_t colon = text.find(':');
  const bool isShaped = colon != std::string::npos && colon > 0 && colon <= 4 && colon + 1 < text.size() &&
                        text.find_first_not_of("0123456789", 0) == colon &&
                        text.find_first_not_of("0123456789.", colon + 1) == std::string::npos;
  if (!isShaped) throw UsageError("--length takes a time such as 3:25, not '" + text + "'");
  const double seconds = std::strtod(text.c_str() + colon + 1, nullptr);
  return std::strtol(text.c_str(), nullptr, 10) * 60000 + std::lround(std::min(seconds, 1e6) * 1000);
}

unsigned threads_of(const std::string& text) {
  char* end = nullptr;
  const long count = std::strtol(text.c_str(), &end, 10);
  if (end == text.c_str() || *end != '\0' || count < 1 || count > 256) {
    throw UsageError("--jobs takes a number from 1 to 256, not '" + text + "'");
  }
  return static_cast<unsigned>(count);
}

void read_conversion(const TGiven& given, TOptions* options) {
  if (given.contains(kTo) == given.contains(kDialect)) throw UsageError("convert needs either --to or --dialect");
  if (given.contains(kTo)) {
    options->toExtended = chosen<bool>(given, kTo, {{"std", false}, {"ext", true}});
    return;
  }
  if (given.contains(kLikeEditor)) throw UsageError("--dialect changes well-formed tags only, without --like-editor");
  options->toDialect =
      chosen<TDialect>(given, kDialect, {{"family", TDialect::kFamily}, {"common", TDialect::kCommon}});
}

void read_target(const TGiven& given, TOptions* options) {
  const bool hasTarget = given.contains(kTo);
  switch (options->command) {
  case TCommand::kConvert:
    return read_conversion(given, options);
  case TCommand::kEncode:
    if (!hasTarget && !given.contains(kEol)) throw UsageError("encode needs --to, --eol or both");
    if (hasTarget) options->toEncoding = chosen_encoding(given, kTo);
    break;
  case TCommand::kCheck:
    if (hasTarget) options->toEncoding = chosen_encoding(given, kTo);
    break;
  case TCommand::kExport:
    if (hasTarget) {
      options->exportFormat = chosen<TExportFormat>(given, kTo,
                                                    {{"lrc", TExportFormat::kDotted},
                                                     {"enhanced", TExportFormat::kEnhanced},
                                                     {"srt", TExportFormat::kSubtitles}});
    }
    break;
  default:
    break;
  }
}

void read_values(const TGiven& given, TOptions* options) {
  read_target(given, options);
  if (options->command == TCommand::kShift && !given.contains(kBy)) throw UsageError("shift needs --by MS");
  if (given.contains(kBy)) options->shiftMs = amount_of(given.at(kBy));
  if (given.contains(kEol)) {
    options->toLineEnd =
        chosen<TLineEnd>(given, kEol, {{"lf", TLineEnd::kLf}, {"crlf", TLineEnd::kCrLf}, {"cr", TLineEnd::kCr}});
  }
  if (given.contains(kFrom) && given.at(kFrom) != "auto") options->readEncoding = chosen_encoding(given, kFrom);
  if (given.contains(kLength)) options->songLengthMs = length_of(given.at(kLength));
  if (given.contains(kFormat)) {
    options->reportFormat = chosen<TReportFormat>(
        given, kFormat,
        {{"text", TReportFormat::kText}, {"tsv", TReportFormat::kTable}, {"json", TReportFormat::kJson}});
  }
  if (given.contains(kLyrics)) options->lyrics = given.at(kLyrics);
  if (given.contains(kLyrics) && options->lyrics.empty()) throw UsageError("--lyrics needs a path");
  if (given.contains(kOutput)) options->output = given.at(kOutput);
  if (given.contains(kOutput) && options->output.empty()) throw UsageError("--output needs a path");
  if (given.contains(kJobs)) options->threads = threads_of(given.at(kJobs));
  options->likeEditor = given.contains(kLikeEditor);
  options->overwrites = given.contains(kForce);
  options->isDryRun = given.contains(kDryRun);
  options->isQuiet = given.contains(kQuiet);
}

TOptions options_of(const TGiven& given, const std::vector<std::string>& words) {
  if (words.empty()) throw UsageError("missing command");
  const TCommandName& command = command_named(words.front());
  for (const auto& [id, argument] : given) {
    const bool isForAll = id == kFrom || id == kJobs || id == kQuiet;
    if (!isForAll && std::find(command.options.begin(), command.options.end(), id) == command.options.end()) {
      throw UsageError(std::string(command.name) + " does not take " + name_of(id));
    }
  }
  TOptions options;
  options.command = command.command;
  options.paths.assign(words.begin() + 1, words.end());
  if (options.paths.empty()) throw UsageError("name at least one file or folder, or - for standard input");
  if (std::count(options.paths.begin(), options.paths.end(), "-") > 1) throw UsageError("- can be given only once");
  read_values(given, &options);
  if (options.IsAboutSongs() && std::count(options.paths.begin(), options.paths.end(), "-") > 0)
    throw UsageError("songs cannot be read from standard input");
  return options;
}

} // namespace

TParsedLine parse_command_line(int argc, char** argv) {
  try {
    const TGiven given = read_options(argc, argv);
    if (given.contains(kHelp)) return {{}, kHelpText, kExitFine};
    if (given.contains(kVersion)) return {{}, kVersionText, kExitFine};
    return {options_of(given, {argv + optind, argv + argc}), {}, kExitFine};
  } catch (const UsageError& error) {
    const std::string more = "Try 'vesmo-lrc --help'.";
    return {{}, std::string("vesmo-lrc: ") + error.what() + "\n" + more + "\n", kExitUsage};
  }
}
