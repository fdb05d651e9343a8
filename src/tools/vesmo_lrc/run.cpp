#include "tools/vesmo_lrc/run.h"

#include "common/koreva.h"
#include "songtags/song_file_names.h"
#include "tools/vesmo_lrc/count_of.h"
#include "tools/vesmo_lrc/outcome.h"
#include "tools/vesmo_lrc/parallel.h"
#include "tools/vesmo_lrc/progress.h"
#include "tools/vesmo_lrc/report.h"
#include "tools/vesmo_lrc/stop.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <set>
#include <thread>

namespace fs = std::filesystem;

namespace {

/** Files per flush of the disk. A flush costs about as much as writing some dozen files, and file systems are slow to
    create files right after others were removed, so more is better. */
constexpr size_t kMostFilesAtOnce = 8192;
/** Files per run for commands that write nothing; few, so that results appear soon. */
constexpr size_t kFewFiles = 64;

/** The export path of each file, in order; empty for the standard output. */
std::vector<std::string> export_paths(const TOptions& options, const std::vector<TInput>& inputs) {
  std::vector<std::string> paths(inputs.size());
  if (options.output.empty() || options.output == "-") return paths;
  std::error_code error;
  const bool isFolder = inputs.size() > 1 || options.output.back() == '/' || fs::is_directory(options.output, error);
  const auto copy_name = [&options](const std::string& name) {
    return options.IsAboutSongs() ? koreva::reext(name, "lrc") : export_name(name, options.exportFormat);
  };
  for (size_t i = 0; i < inputs.size(); ++i) {
    const std::string name = inputs[i].path == "-" ? "lyrics" : inputs[i].relative;
    paths[i] = isFolder ? (fs::path(options.output) / copy_name(name)).string() : options.output;
  }
  return paths;
}

class TRun {
public:
  explicit TRun(const TOptions& options) : fOptions(options), fFrame(report_frame(options)) {}

  int Run() {
    const bool isAboutSongs = fOptions.IsAboutSongs();
    fInputs = collect_files(fOptions.paths, isAboutSongs ? has_song_name : has_lyrics_name,
                            [this](const std::string& text) { ReportError(text); });
    if (fInputs.empty()) ReportError(isAboutSongs ? "no songs found" : "no lyrics files found");
    if (fOptions.WritesCopies() && !CanExport()) return kExitUsage;
    if (!fOptions.lyrics.empty() && fInputs.size() > 1) {
      Say("--lyrics is for one song only");
      return kExitUsage;
    }
    fOutcomes.resize(fInputs.size());
    Print(fFrame.before);
    WorkOnAll();
    Print(fFrame.after);
    if (std::fflush(stdout) != 0) fOutputFailed = true;
    if (fOutputFailed) ReportError("the result could not be written");
    Summarize();
    return ExitCode();
  }

private:
  void ReportError(const std::string& text) {
    fFailures = true;
    Say(text);
  }
  static void Say(const std::string& text) { std::fputs(("vesmo-lrc: " + printable(text) + "\n").c_str(), stderr); }

  void Print(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) fOutputFailed = true;
  }

  /** Determines the export paths and checks that they are distinct. */
  bool CanExport() {
    if (fInputs.size() > 1 && (fOptions.output.empty() || fOptions.output == "-")) {
      Say("name a folder with --output for the copies of several files");
      return false;
    }
    fExportPaths = export_paths(fOptions, fInputs);
    std::set<std::string> taken;
    for (const std::string& path : fExportPaths) {
      if (path.empty() || taken.insert(path).second) continue;
      Say("two of the files would be written to " + path);
      return false;
    }
    return true;
  }

  void WorkOnAll() {
    if (fInputs.empty()) return;
    TProgress progress(fInputs.size(), !fOptions.isQuiet);
    const unsigned cores = std::max(1U, std::thread::hardware_concurrency());
    TParallelWork work;
    work.count = fInputs.size();
    work.threads = static_cast<unsigned>(std::min<size_t>(fOptions.threads > 0 ? fOptions.threads : cores, work.count));
    const bool writes = fOptions.ChangesFiles() || fOptions.WritesCopies();
    const size_t share = (work.count + work.threads - 1) / work.threads;
    work.runLength = std::min(share, writes ? kMostFilesAtOnce : kFewFiles);
    work.work = [this](size_t first, size_t last) { WorkOn(first, last); };
    work.finished = [&](size_t first, size_t last) { Show(first, last, &progress); };
    work.waiting = [&] { progress.Show(fDone); };
    work.isStopped = [this] { return IsStopped(); };
    run_in_parallel(work);
  }

  bool IsStopped() const { return stop_signal() != 0 || fOutputFailed; }

  /** On a worker thread. */
  void WorkOn(size_t first, size_t last) {
    TReplacementBatch batch;
    for (size_t i = first; i < last && !IsStopped(); ++i, ++fDone) fOutcomes[i] = WorkOnOne(i, &batch);
    if (IsStopped()) { // the batch is rolled back
      for (const size_t id : batch.Waiting()) fOutcomes[id].state = TOutcome::kNotDone;
      return;
    }
    batch.Commit([this](size_t id, status_t status) {
      if (status == B_OK) return;
      fOutcomes[id].state = TOutcome::kFailed;
      fOutcomes[id].error = error_text(status);
    });
  }

  TOutcome WorkOnOne(size_t index, TReplacementBatch* batch) {
    try {
      return work_on(fOptions, fInputs[index], fExportPaths.empty() ? std::string() : fExportPaths[index], fEdited,
                     index, batch);
    } catch (const std::exception&) {
      TOutcome outcome;
      outcome.state = TOutcome::kFailed;
      outcome.error = error_text(B_NO_MEMORY);
      return outcome;
    }
  }

  void Show(size_t first, size_t last, TProgress* progress) {
    for (size_t i = first; i < last; ++i) {
      TOutcome& outcome = fOutcomes[i];
      if (!outcome.printed.empty() || outcome.state == TOutcome::kFailed) progress->Clear();
      if (!outcome.printed.empty()) {
        Print(fHasPrinted ? fFrame.between : std::string());
        Print(outcome.printed);
        fHasPrinted = true;
      }
      if (outcome.state == TOutcome::kFailed) ReportError(fInputs[i].Name() + ": " + outcome.error);
      outcome.printed = {}; // large for many files
    }
    progress->Show(fDone);
  }

  size_t Count(TOutcome::TState state) const {
    return static_cast<size_t>(std::count_if(fOutcomes.begin(), fOutcomes.end(),
                                             [state](const TOutcome& outcome) { return outcome.state == state; }));
  }

  void Summarize() const {
    if (fOptions.isQuiet) return;
    size_t bracketsLeft = 0;
    long linesLeftOut = 0;
    for (const TOutcome& outcome : fOutcomes) {
      bracketsLeft += outcome.bracketsLeft;
      linesLeftOut += outcome.linesLeftOut;
    }
    if (bracketsLeft > 0) {
      Say(count_of(bracketsLeft, "line with a bracket that is not a time tag was left unchanged",
                   "lines with a bracket that is not a time tag were left unchanged"));
    }
    if (linesLeftOut > 0) {
      Say(count_of(static_cast<size_t>(linesLeftOut), "line without a time tag was left out",
                   "lines without a time tag were left out"));
    }
    if (fOutcomes.size() > 1 && fOptions.command != TCommand::kInfo) Say(Counts());
  }

  std::string Counts() const {
    const auto number = [this](TOutcome::TState state) { return std::to_string(Count(state)); };
    const std::string failed = number(TOutcome::kFailed) + " failed";
    const std::string notDone = Count(TOutcome::kNotDone) > 0 ? ", " + number(TOutcome::kNotDone) + " not started" : "";
    if (fOptions.command == TCommand::kCheck) {
      return count_of(Count(TOutcome::kFindings), "file", "files") + " with findings, " + number(TOutcome::kAsItWas) +
             " without, " + failed + notDone;
    }
    const char* const done = fOptions.WritesCopies() ? " written, "
                             : fOptions.isDryRun     ? " would change, "
                                                     : " changed, ";
    return count_of(Count(TOutcome::kChanged), "file", "files") + done + number(TOutcome::kAsItWas) + " unchanged, " +
           failed + notDone;
  }

  int ExitCode() const {
    if (stop_signal() != 0) return 128 + stop_signal();
    return fFailures || fOutputFailed || Count(TOutcome::kFindings) > 0 ? kExitFindings : kExitFine;
  }

  const TOptions& fOptions;
  const TReportFrame fFrame;
  const TEditedFiles fEdited;
  std::vector<TInput> fInputs;
  std::vector<std::string> fExportPaths; // empty for other commands
  std::vector<TOutcome> fOutcomes;       // each written by the worker of its run
  std::atomic<size_t> fDone{0};
  std::atomic<bool> fOutputFailed{false};
  bool fFailures = false; // used on the main thread
  bool fHasPrinted = false;
};

} // namespace

int run(const TOptions& options) {
  return TRun(options).Run();
}
