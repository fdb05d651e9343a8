#pragma once

#include "toolkit/alerts.h"

#include <string>

/** Questions and messages in the user's language: captions and buttons are language keys, letters are shown in the
    family's format. Block the calling thread until answered, unless noted. */

/** A button from its language key and its letter. */
koreva::TAlertButton text_button(const char* key, char letter, bool isHarmless = false);
/** Cancel, which Escape presses and, for questions whose other answers lose something, Return. */
koreva::TAlertButton cancel_button(bool isDefault = false);
/** Returns the index of the pressed button. */
long ask(const std::string& text, std::initializer_list<koreva::TAlertButton> buttons);
/** No and Yes; true for Yes. */
bool ask_no_yes(const std::string& text);
/** One button, "Button_Understand". */
void tell(const std::string& text);
/** Like `tell`, but with a timeout. */
void tell_for(bigtime_t limitUs, const std::string& text);
/** Like `tell`, but does not wait: for the manager's thread, which the player waits for. */
void notify(const std::string& text);
