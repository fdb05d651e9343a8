#include "platform/app/desktop_entry.h"

#include <gmock/gmock.h>

namespace {

using namespace testing;

std::string entry(const std::string& exec) {
  return "# menu\n[Desktop Entry]\nType=Application\nExec[de]=nicht\nExec = " + exec +
         "\nX-KOREVA-Signature=a/b\n[Desktop Action New]\nExec=other\nX-KOREVA-Signature=c/d\n";
}

const std::pair<const char*, std::vector<std::string>> kCommands[] = {
    {"sonivo", {"sonivo"}},
    {"sonivo %F", {"sonivo"}},
    {"sonivo  --edit  %f --at=%u %%x ", {"sonivo", "--edit", "--at=", "%x"}},
    {R"("/opt/my player/sonivo" "" "%%F")", {"/opt/my player/sonivo", "", "%F"}},
    {R"(a "\\"b\\" \\$HOME \\`c\\` \\\\d")", {"a", R"("b" $HOME `c` \d)"}},
    {R"(a\sb)", {"a", "b"}},
    {"env A=b c", {"env", "A=b", "c"}},
};

const char* const kRefusedCommands[] = {
    "",       "%F",     "\"\"",    "a %",       "a %y",    "a 'b'",    "a; b", "a | b",       "a $HOME",
    "a `b`",  "a > b",  "a &",     "\"a",       "\"a\"b",  "a\"b\"",   "a #b", "a \"$HOME\"", "a \"`b`\"",
    R"(a\b)", R"(a \)", R"("a\\)", R"("a\\b")", R"(a\nb)", R"(a\\sb)",
};

} // namespace

TEST(DesktopEntry, SplitsTheCommandWithoutAShell) {
  for (const auto& [exec, arguments] : kCommands) {
    const std::optional<DesktopEntry> found = parse_desktop_entry(entry(exec));
    ASSERT_TRUE(found) << exec;
    EXPECT_EQ(found->arguments, arguments) << exec;
    EXPECT_EQ(found->signature, "a/b");
  }
}

TEST(DesktopEntry, RefusesACommandThatIsNotWellFormed) {
  for (const char* exec : kRefusedCommands) EXPECT_FALSE(parse_desktop_entry(entry(exec))) << exec;
}

TEST(DesktopEntry, ReadsOnlyApplicationsAndTheirMainGroup) {
  EXPECT_EQ(parse_desktop_entry("[Desktop Entry]\r\nType=Application\r\nExec=a\r\n")->signature, "");
  EXPECT_THAT(parse_desktop_entry("[X]\nExec=a\n[Desktop Entry]\nType=Application\nExec=b\nExec=c")->arguments,
              ElementsAre("b"));
  EXPECT_TRUE(parse_desktop_entry("[Desktop Entry]\nHidden=true\n")->isHidden);
  for (const std::string text :
       {"", "[Desktop Entry]", "[Desktop Entry]\nType=Link\nExec=a\n", "[Desktop Entry]\nType=Application\n#Exec=a\n",
        "Type=Application\nExec=a\n", "[X]\nType=Application\nExec=a\n", "\n=\n[\n]\n[Desktop Entry]\n=\nExec"}) {
    EXPECT_FALSE(parse_desktop_entry(text)) << text;
  }
  std::string withNul = entry("a");
  withNul[withNul.find("=a") + 1] = '\0';
  EXPECT_FALSE(parse_desktop_entry(withNul));
}
