#include "tools/vesmo_lrc/outcome.h"

#include "lyrics/line_limit.h"
#include "tools/vesmo_lrc/check.h"
#include "tools/vesmo_lrc/diff.h"
#include "tools/vesmo_lrc/report.h"
#include "tools/vesmo_lrc/rewrite.h"
#include "tools/vesmo_lrc/songs.h"

namespace {

std::string edited_text(int32 process) {
  return "an editor (process " + std::to_string(process) + ") has unsaved changes in it; --force changes it anyway";
}

TOutcome info(const TInput& input, const TExactLyrics& lyrics, const TOptions& options) {
  TOutcome outcome;
  outcome.state = TOutcome::kAsItWas;
  outcome.printed = info_report(input.Name(), lyrics, options.reportFormat);
  return outcome;
}

TOutcome checked(const TInput& input, const TExactLyrics& lyrics, const TOptions& options) {
  const std::vector<TFinding> findings = check(lyrics, options);
  TOutcome outcome;
  outcome.state = findings.empty() ? TOutcome::kAsItWas : TOutcome::kFindings;
  outcome.printed = check_report(input.Name(), findings, options.reportFormat);
  return outcome;
}

/** The diff of the lines; if only encoding or line ends differ, those. */
std::string difference(const TInput& input, const TExactLyrics& lyrics, const TRewritten& made) {
  if (*made.bytes == lyrics.Bytes()) return {};
  std::string lines = unified_diff(input.Name(), lyrics.Lines(), made.lines);
  if (!lines.empty()) return lines;
  return printable(input.Name()) + ": " + form_of(lyrics) + " becomes " + made.form + "\n";
}

TOutcome changed(const TInput& input, const struct stat& asRead, const TExactLyrics& lyrics, const TOptions& options,
                 const TEditedFiles& edited, size_t id, TReplacementBatch* batch) {
  const TRewritten made = rewrite(lyrics, options);
  if (!made.bytes) return failed(made.refusal);
  TOutcome outcome;
  outcome.state = *made.bytes == lyrics.Bytes() ? TOutcome::kAsItWas : TOutcome::kChanged;
  outcome.bracketsLeft = made.bracketsLeft;
  if (options.isDryRun) {
    outcome.printed = difference(input, lyrics, made);
  } else if (input.path == "-") {
    outcome.printed = *made.bytes;
  } else if (outcome.state == TOutcome::kChanged) {
    const std::optional<int32> process = options.overwrites ? std::nullopt : edited.ProcessOf(asRead);
    if (process) return failed(edited_text(*process));
    const status_t status = batch->Add(id, input.path, asRead, *made.bytes);
    if (status != B_OK) return failed(error_text(status));
  }
  return outcome;
}

TOutcome exported(const TInput& input, const std::string& path, const TExactLyrics& lyrics, const TOptions& options,
                  size_t id, TReplacementBatch* batch) {
  if (const std::string error = unreadable_text(lyrics); !error.empty()) return failed(error);
  const std::optional<TExported> made = export_lyrics(lyrics.Lines(), options.exportFormat);
  const bool needsWords = options.exportFormat == TExportFormat::kEnhanced;
  if (!made) return failed(needsWords ? "no line has time tags within it" : "no line has a time tag");
  TOutcome outcome;
  outcome.state = TOutcome::kChanged;
  outcome.linesLeftOut = made->linesLeftOut;
  if (path.empty()) {
    outcome.printed = made->bytes;
  } else if (options.isDryRun) {
    outcome.printed = printable(input.Name() + " -> " + path) + "\n";
  } else {
    const status_t status = batch->AddCopy(id, path, made->bytes, options.overwrites);
    if (status != B_OK) return failed(path + ": " + error_text(status));
  }
  return outcome;
}

} // namespace

TOutcome failed(std::string error) {
  TOutcome outcome;
  outcome.state = TOutcome::kFailed;
  outcome.error = std::move(error);
  return outcome;
}

TOutcome work_on(const TOptions& options, const TInput& input, const std::string& exportPath,
                 const TEditedFiles& edited, size_t id, TReplacementBatch* batch) {
  if (options.command == TCommand::kExtract) return extract_lyrics(options, input, exportPath, id, batch);
  if (options.command == TCommand::kEmbed) return embed_lyrics(options, input);
  std::string bytes;
  struct stat asRead {};
  const status_t status = read_input(input.path, &bytes, &asRead);
  if (status != B_OK) return failed(error_text(status));
  if (has_too_many_lines(bytes)) return failed("more than " + std::to_string(kMostLines) + " lines");
  const TExactLyrics lyrics(std::move(bytes), options.readEncoding);
  switch (options.command) {
  case TCommand::kInfo:
    return info(input, lyrics, options);
  case TCommand::kCheck:
    return checked(input, lyrics, options);
  case TCommand::kExport:
    return exported(input, exportPath, lyrics, options, id, batch);
  default:
    return changed(input, asRead, lyrics, options, edited, id, batch);
  }
}
