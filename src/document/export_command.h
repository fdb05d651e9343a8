#pragma once

#include <optional>
#include <string>

class BMessage;
class TDocument;

/** Writes the document for other programs, as a save panel's answer names file and "Format". The document itself, and
    whether it counts as modified, does not change. Returns the report for the status bar; nothing when nothing was
    written, after a message to the user where one is due. */
std::optional<std::string> export_document(const TDocument& document, const BMessage& answer);
