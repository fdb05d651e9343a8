#pragma once

#include "tools/vesmo_lrc/edited_files.h"
#include "tools/vesmo_lrc/files.h"
#include "tools/vesmo_lrc/options.h"

/** The result for one file. */
struct TOutcome {
  enum TState { kNotDone, kAsItWas, kChanged, kFindings, kFailed };
  TState state = kNotDone;
  std::string printed;     // printed to standard output
  std::string error;       // reason of the failure
  size_t bracketsLeft = 0; // see TRewritten
  long linesLeftOut = 0;   // see TExported
};

TOutcome failed(std::string error);

/** Runs the command on one file. New content is added to the batch; the outcome is valid once that is committed.
    `exportPath` is empty for the standard output. Thread-safe with one batch per thread. */
TOutcome work_on(const TOptions& options, const TInput& input, const std::string& exportPath,
                 const TEditedFiles& edited, size_t id, TReplacementBatch* batch);
