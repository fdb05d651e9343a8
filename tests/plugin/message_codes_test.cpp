#include "tests/support/testing.h"

#include <regex>

TEST(MessageCodes, NoTwoNamesHaveOneCode) {
  std::ifstream header(SOURCE_FOLDER "/src/plugin/message_codes.h");
  const std::string text{std::istreambuf_iterator<char>(header), {}};
  const std::regex definition(R"((kMsg\w+) = ('.{4}'))");
  std::map<std::string, std::string> names;
  for (std::sregex_iterator found(text.begin(), text.end(), definition), end; found != end; ++found) {
    const auto [other, isNew] = names.emplace((*found)[2], (*found)[1]);
    EXPECT_TRUE(isNew) << other->second << " and " << (*found)[1] << " are " << (*found)[2];
  }
  EXPECT_FALSE(names.empty());
}
