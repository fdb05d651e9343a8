#pragma once

class BMessage;
class TDocument;

/** True, after a message to the user, for the answer ("Document") of a panel or dialog that was opened while another
    document was open. */
bool is_for_another_document(const BMessage& answer, const TDocument& document);
