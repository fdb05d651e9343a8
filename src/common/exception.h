#pragma once

#include "platform/support/types.h"

#include <exception>
#include <string>

namespace koreva {

/** An error inside the library: a number and a text. Always caught within the library. */
class TException : public std::exception {
public:
  TException(int32 id, std::string text) : fID(id), fString(std::move(text)) {}
  explicit TException(std::string text) : TException(0, std::move(text)) {}

  int32 ID() const { return fID; }
  const std::string& String() const { return fString; }
  const char* what() const noexcept override { return fString.c_str(); }

private:
  int32 fID;
  std::string fString;
};

} // namespace koreva
