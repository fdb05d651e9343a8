#pragma once

#include "platform/support/types.h"

#include <list>
#include <string>

/** An edit view as the editor view uses it, however it shows the lines. On the window's thread. */
class TEditViewInterface {
public:
  TEditViewInterface() = default;
  TEditViewInterface(const TEditViewInterface&) = delete;
  TEditViewInterface& operator=(const TEditViewInterface&) = delete;
  virtual ~TEditViewInterface() = default;

  /** The number of a TEditMode. 0: tags with hundredths, else without. */
  virtual void SetMode(int32 mode) = 0;
  virtual void SetLines(const std::list<std::string>& lines) = 0;
  /** Appends. */
  virtual void GetLines(std::list<std::string>* lines) const = 0;
  virtual void SetModified(bool modified) = 0;
  virtual bool IsModified() const = 0;
  /** From 0; no effect outside the lines. */
  virtual void SetCurLine(int32 line) = 0;
  /** Negative when there is none. */
  virtual int32 CurLine() = 0;
  /** Applies font and colours from the settings. */
  virtual void SetAppearance() = 0;
  virtual void LanguageChanged() = 0;
  virtual std::string StatBarSymbol() const = 0;
  virtual std::string DefaultStatBarStr() const = 0;
  /** Empties the view and clears the modified flag. */
  virtual void Clear() = 0;
};
