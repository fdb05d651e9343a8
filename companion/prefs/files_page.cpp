#include "companion/prefs/files_page.h"

TFilesPage::TFilesPage() : TPrefPage("Files") {
  AddMenu("ReadEncoding", "Pref_Read_Encoding", &TPrefValues::readEncoding,
          {{4, "Pref_Detect"}, {0, "MItem_Encoding_0"}, {1, "MItem_Encoding_1"}, {2, "MItem_Encoding_2"}});
  AddMenu("WriteEncoding", "Pref_Write_Encoding", &TPrefValues::writeEncoding,
          {{0, "MItem_Encoding_0"}, {1, "MItem_Encoding_1"}, {2, "MItem_Encoding_2"}});
  AddMenu("LineEnds", "Pref_Line_Ends", &TPrefValues::writeCRType,
          {{0, "MItem_CR_Type_0"}, {1, "MItem_CR_Type_1"}, {2, "MItem_CR_Type_2"}});
}
