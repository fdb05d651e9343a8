#pragma once

#include <list>
#include <string>
#include <vector>

/** What a command on every line would change, to be shown before it is carried out. */
struct TBulkPreview {
  struct TLine {
    size_t number = 0; // from 1
    std::string before;
    std::string after;
  };
  std::vector<TLine> first; // the first few lines that change
  size_t changed = 0;       // how many do
  size_t emptied = 0;       // of them, those that become empty
};

/** The command has kept the number of lines. Pure: any thread. */
TBulkPreview bulk_preview(const std::vector<std::string>& before, const std::list<std::string>& after,
                          size_t mostShown);
