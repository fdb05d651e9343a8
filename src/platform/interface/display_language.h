#pragma once

/** The language of what the display says by itself, in file panels and in the menus of text fields: "ja", "de" and so
    on; English for a language that it does not speak. Any thread; open windows change as well. */
void set_display_language(const char* code);
