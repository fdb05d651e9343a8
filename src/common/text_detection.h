#pragma once

namespace koreva {

/** 0 LF, 1 CR LF (as many CR as LF, and at least one), 2 CR (more CR than LF); counted up to the NUL. */
long detect_cr_type(const char* text);

/** 2 (JIS) if the text contains an ESC, otherwise 1 (Shift-JIS) if it is malformed UTF-8, otherwise 0 (UTF-8). A
    truncated sequence at the end is malformed. */
long detect_charset(const char* text);

} // namespace koreva
