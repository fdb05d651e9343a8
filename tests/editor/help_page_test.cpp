#include "editor/help_page.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

TEST(HelpPage, ChangedKeysStandAtTheTopOfTheReadersLanguage) {
  const std::string page = R"(<section lang="en"><h1>A</h1><img src="pictures/a.svg"></section>)"
                           R"(<section lang="ja"><h1>B</h1><a href="#ja-tag">x</a></section>)";
  const std::string changed = help_with_keys(page, "ja", "Keys", {{"Cut & <paste>", "F5"}, {"Save", ""}}, "/opt/a b");
  EXPECT_THAT(changed, HasSubstr("<h1>B</h1>\n<h2>Keys</h2>"));
  EXPECT_THAT(changed, HasSubstr("<td>Cut &amp; &lt;paste></td><td><kbd>F5</kbd></td>"));
  EXPECT_THAT(changed, HasSubstr("<td>Save</td><td>–</td>"));
  EXPECT_THAT(changed, HasSubstr(R"(<img src="file:///opt/a%20b/pictures/a.svg">)"));
  EXPECT_THAT(changed, HasSubstr(R"(<a href="#ja-tag">)"));
}
