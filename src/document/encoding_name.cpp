#include "document/encoding_name.h"

#include "language/llt.h"
#include "lyrics/foreign_encoding.h"

std::string encoding_name(TEncoding encoding) {
  if (const char* const foreign = foreign_name(encoding)) return foreign;
  return gLLT->Text(("StatBarSymbol_Encoding_" + std::to_string(static_cast<int32>(encoding))).c_str());
}
