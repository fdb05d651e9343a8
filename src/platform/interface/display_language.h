#pragma once

/** Sets the language of Qt's own texts, in file panels and the context menus of text fields: "ja", "de" and so on;
    English where there is no translation. Any thread; open windows change as well. */
void set_display_language(const char* code);
