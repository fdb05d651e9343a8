#pragma once

#include "player/texts/player_texts.h"

#include <QKeySequence>
#include <QString>

/** A text of the player in the user's language. */
inline QString shown_text(const char* key) {
  return QString::fromUtf8(player_text(key));
}

inline QString shown_key(const QKeySequence& key) {
  return key.toString(QKeySequence::NativeText);
}

/** For menus: the text, and the key that does the same. The key is only a label; a shortcut makes it work. */
inline QString menu_text(const char* name, const QKeySequence& key) {
  return shown_text(name) + '\t' + shown_key(key);
}

/** A menu's text elsewhere, without its mnemonic: "&Play", or "再生(&P)" where the letter is not part of the word. */
inline QString plain_text(const char* name) {
  QString text = shown_text(name);
  const qsizetype mark = text.indexOf('&');
  if (mark < 0) return text;
  const bool isAppended = mark > 0 && text[mark - 1] == '(' && text.indexOf(')', mark) == mark + 2;
  return isAppended ? text.remove(mark - 1, 4) : text.remove(mark, 1);
}
