#pragma once

#include "common/archivable.h"

/** The settings of the preferences page "Files", in a record of their own: "VesmoShared_Files.arc". The preferences
    window writes it; the editor reads it whenever it needs one of them, so that a change takes effect at once. Names in
    quotes are the fields on disk. */
class TFileChoices : public koreva::TArchivable {
public:
  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;
  friend bool operator==(const TFileChoices& a, const TFileChoices& b) {
    return a.newDialect == b.newDialect && a.recognisesCommon == b.recognisesCommon &&
           a.renewsCopies == b.renewsCopies && a.savesForeignAsUtf8 == b.savesForeignAsUtf8;
  }

  int32 newDialect = 0;            // "NDlc": of new documents, a TDialect
  bool recognisesCommon = true;    // "RCmn": files with [mm:ss.cc] are opened in their own dialect
  bool savesForeignAsUtf8 = false; // "FUt8": files in a foreign encoding (lyrics/foreign_encoding.h)
  bool renewsCopies = false;       // "RnwC": a copy for other players is renewed at every save
};

/** The stored settings, or the defaults. Any thread. */
TFileChoices load_file_choices();
bool store_file_choices(const TFileChoices& choices);
