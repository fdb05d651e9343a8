#!/usr/bin/env python3
"""Compares the language keys that the program uses with the texts of every language file, and these with the help.

A key is a string literal in the sources that begins like one; one that ends with an underscore is completed by a
number at run time. Every file must have every key exactly once and no unused key, and each text must insert the same
other texts as the English one. The help has a section for each language, which names every menu and its commands.
"""
import html
import pathlib
import re
import subprocess
import sys

KEY = re.compile(
    r'"((?:About|Menu|MItem|Button|Ask|Err|Hint|StatBarStr|StatBarSymbol|StrView|Tab|Label|Display|Player|Pref|Notice|Loss|Differences|Command|Lane)_\w+'
    r"|Alert_Caption|App_Author|Locale|New_Lyrics|Std_Time_Tag|Ext_Time_Tag|\w+_Panel_Title|\w+_Win_Title|Default_StatBarStr_\w+)\""
)


def keys_used():
    sources = subprocess.run(
        ["git", "ls-files", "src/*.h", "src/*.cpp"],
        capture_output=True, text=True, check=True).stdout.split()
    return {key for source in sources for key in KEY.findall(open(source, encoding="utf-8").read())}


def texts_of(path):
    texts, section = {}, ""
    for line in open(path, encoding="utf-8"):
        if line.startswith("["):
            section = line.strip()
        elif section == "[Data]" and "=" in line and not line.startswith(";"):
            key, text = line.split("=", 1)
            if key.strip() in texts:
                faults.append(f"{path}: {key.strip()} is defined twice")
            texts[key.strip()] = text.strip()
    return texts


faults = []


def references(text):
    """The other texts that a text inserts."""
    return sorted(re.findall(r"@(\w+)@", text))


def help_sections():
    """The help's text for each language, by the names of the locales."""
    page = pathlib.Path("src/editor/help/VesmoE.htm").read_text(encoding="utf-8")
    sections = re.findall(r'<section lang="(\w+)"(.*?)</section>', page, re.DOTALL)
    return {locale: html.unescape(re.sub(r"<[^>]*>", "\n", body)) for locale, body in sections}


def check_help(path, texts, sections):
    """Every menu and command as the user reads it there. The save panel's entries need no explanation."""
    section = sections.get(texts.get("Locale"))
    if section is None:
        faults.append(f"{path}: the help has no section for it")
        return
    for key, text in texts.items():
        if re.match(r"Menu_|MItem_", key) and not re.match(r"MItem_(Encoding|CR_Type|Dialect|Export_Format)_", key):
            if text not in section:
                faults.append(f"{path}: the help does not name {key}, {text}")


def main():
    used = keys_used()
    sections = help_sections()
    files = subprocess.run(["git", "ls-files", "src/language/texts/*.llt"], capture_output=True, text=True,
                           check=True).stdout.split()
    english = texts_of("src/language/texts/English.llt")
    for path in files:
        texts = texts_of(path)
        for key in sorted(used):
            known = key in texts or (key.endswith("_") and any(other.startswith(key) for other in texts))
            if not known:
                faults.append(f"{path}: {key} is missing")
        for key in sorted(texts):
            if key not in used and not any(part.endswith("_") and key.startswith(part) for part in used):
                faults.append(f"{path}: nothing uses {key}")
            if key not in english:
                faults.append(f"{path}: {key} is not in the English file")
            elif references(texts[key]) != references(english[key]):
                faults.append(f"{path}: {key} inserts other texts than the English one")
        for key in sorted(english.keys() - texts.keys()):
            faults.append(f"{path}: {key} is missing")
        check_help(path, texts, sections)
    for fault in dict.fromkeys(faults):
        print(fault, file=sys.stderr)
    print(f"{len(files)} language files, {len(english)} texts each" if not faults else f"{len(faults)} faults")
    return 1 if faults else 0


sys.exit(main())
