#pragma once

#include "tools/vesmo_lrc/files.h"
#include "tools/vesmo_lrc/options.h"

/** What became of one file. */
struct TOutcome {
  enum TState { kNotDone, kAsItWas, kChanged, kFindings, kFailed };
  TState state = kNotDone;
  std::string printed;     // for the standard output
  std::string fault;       // why it failed
  size_t bracketsLeft = 0; // see TRewritten
  long linesLeftOut = 0;   // see TExported
};

/** The command's work on one file. What is to be written waits in the batch; the outcome says what will be true once
    that is committed. `exportPath` is empty for the standard output. Any thread, a batch for each. */
TOutcome work_on(const TOptions& options, const TInput& input, const std::string& exportPath, size_t id,
                 TReplacementBatch* batch);
