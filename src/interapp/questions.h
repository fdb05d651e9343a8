#pragma once

#include "toolkit/alerts.h"

#include <string>

/** Questions and messages in the user's language: captions and buttons are language keys, letters are shown in the
    family's format. They wait for the answer on the calling thread. */

/** A button from its language key and its letter. */
koreva::TAlertButton text_button(const char* key, char letter, bool isHarmless = false);
/** Returns the index of the pressed button. */
long ask(const std::string& text, std::initializer_list<koreva::TAlertButton> buttons);
/** No and Yes; true for Yes. */
bool ask_no_yes(const std::string& text);
/** One button, "Button_Understand". */
void tell(const std::string& text);
/** The same, but goes on after that time at the latest. */
void tell_for(bigtime_t limitUs, const std::string& text);
/** The same, without waiting until it is read: for the manager's thread, on which the player waits. */
void notify(const std::string& text);
