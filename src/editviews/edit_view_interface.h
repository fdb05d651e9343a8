#pragma once

#include "platform/support/types.h"

#include <list>
#include <string>

/** What the editor view needs of an edit view, whichever way it shows the lines. On the window's thread. */
class TEditViewInterface {
public:
  TEditViewInterface() = default;
  TEditViewInterface(const TEditViewInterface&) = delete;
  TEditViewInterface& operator=(const TEditViewInterface&) = delete;
  virtual ~TEditViewInterface() = default;

  /** 0: tags with hundredths, else without. */
  virtual void SetMode(int32 mode) = 0;
  virtual void SetLines(const std::list<std::string>& lines) = 0;
  /** Appends. */
  virtual void GetLines(std::list<std::string>* lines) const = 0;
  virtual void SetModified(bool modified) = 0;
  virtual bool IsModified() const = 0;
  /** Counted from 0; outside the lines nothing happens. */
  virtual void SetCurLine(int32 line) = 0;
  /** Negative when there is none. */
  virtual int32 CurLine() = 0;
  /** Takes font and colours from the settings again. */
  virtual void SetAppearance() = 0;
  virtual std::string StatBarSymbol() const = 0;
  virtual std::string DefaultStatBarStr() const = 0;
  /** Empties the view and takes the modified mark off. */
  virtual void Clear() = 0;
};
