#include "document/document_answer.h"

#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/document.h"
#include "platform/app/message.h"

bool is_for_another_document(const BMessage& answer, const TDocument& document) {
  int32 number = 0;
  if (answer.FindInt32("Document", &number) != B_OK || number == document.Number()) return false;
  tell(gLLT->Text("Err_Panel_Of_Another"));
  return true;
}
