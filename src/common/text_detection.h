#pragma once

namespace koreva {

/** 0 LF, 1 CR LF (as many CR as LF, and at least one), 2 CR (more CR than LF); counted up to the NUL. */
long detect_cr_type(const char* text);

/** 2 JIS when the text holds an ESC, else 1 Shift-JIS when its bytes break the rules of UTF-8, else 0 UTF-8.
    A sequence cut off by the end of the text is one break. */
long detect_charset(const char* text);

} // namespace koreva
