#include "platform/app/message.h"

#include "tests/support/memory_file.h"
#include "tests/support/messages.h"

namespace {

BMessage sample() {
  BMessage message = message_of('abcd', "text", "日本", "text", "second", "rect", BRect{1, 2, 3, 4}, "wide", int64{-5},
                                "ref", entry_ref{"/folder", "name"}, "inside", message_of('in', "yes", true));
  message.AddData("real", B_DOUBLE_TYPE, "\x1\x2\x3\x4\x5\x6\x7", 8);
  message.AddData("color", B_RAW_TYPE, "\1\2\3\4", 4);
  return message;
}

BMessage reread(const BMessage& message) {
  const std::vector<char> flat = message.Flatten();
  BMessage read;
  EXPECT_EQ(read.Unflatten(flat.data(), flat.size()), B_OK);
  return read;
}

} // namespace

TEST(Message, FindLeavesItsOutputUnchangedOnFailure) {
  const BMessage message = sample();
  int32 number = 7;
  std::string text = "old";
  EXPECT_EQ(message.FindInt32("absent", &number), B_NAME_NOT_FOUND);
  EXPECT_EQ(message.FindInt32("text", &number), B_BAD_TYPE);
  for (const int32 index : {-1, 2}) EXPECT_EQ(message.FindString("text", index, &text), B_BAD_INDEX);
  EXPECT_EQ(message.FindString("rect", &text), B_BAD_TYPE);
  EXPECT_EQ(number, 7);
  EXPECT_EQ(text, "old");
  EXPECT_EQ(message.FindString("text", 1, &text), B_OK);
  EXPECT_EQ(text, "second");
  EXPECT_EQ(BMessage(message).AddInt32("text", 1), B_BAD_TYPE);
  EXPECT_EQ(message.GetInt32("text", 7), 7);
  EXPECT_EQ(message.GetString("text", "none", 1), "second");
}

TEST(Message, BytesOfTextTypeKeepTheirLength) {
  BMessage message;
  for (const auto& [name, size] : {std::pair{"a\0b", 3}, {"abc", 3}, {"text", 5}})
    message.AddData(name, B_STRING_TYPE, name, static_cast<size_t>(size));
  const BMessage copy = reread(message);
  for (const auto& [name, size] : {std::pair{"a", 3}, {"abc", 3}, {"text", 5}}) {
    const void* data = nullptr;
    ssize_t length = 0;
    EXPECT_EQ(copy.FindData(name, B_STRING_TYPE, &data, &length), B_OK);
    EXPECT_EQ(length, size) << name;
    EXPECT_EQ(field<std::string>(copy, name), name) << "as text it ends at its NUL";
  }
}

TEST(Message, NumbersAddedAsBytesAreFoundAsNumbersAlsoAfterSerialization) {
  BMessage message('numb');
  const int32 number = -7;
  const int64 wide = int64{1} << 40;
  EXPECT_EQ(message.AddData("int32", B_INT32_TYPE, &number, sizeof number), B_OK);
  EXPECT_EQ(message.AddData("int64", B_INT64_TYPE, &wide, sizeof wide), B_OK);
  EXPECT_EQ(message.AddData("bool", B_BOOL_TYPE, "\1", 1), B_OK);
  EXPECT_EQ(message.AddData("ref", B_REF_TYPE, "/folder\0name", 12), B_OK);
  for (const type_code type : {B_INT32_TYPE, B_BOOL_TYPE, B_RECT_TYPE})
    EXPECT_EQ(message.AddData("other size", type, "12345", 5), B_BAD_VALUE);
  for (const type_code type : {B_POINTER_TYPE, B_MESSENGER_TYPE, B_MESSAGE_TYPE})
    EXPECT_EQ(message.AddData("no bytes", type, &wide, sizeof wide), B_BAD_TYPE);
  EXPECT_EQ(message.AddInt32(std::string(70000, 'n').c_str(), 1), B_BAD_VALUE) << "longer than the format allows";
  for (const BMessage& each : {message, reread(message)}) {
    EXPECT_EQ(each.FieldNames(), (std::vector<std::string>{"int32", "int64", "bool", "ref"}));
    EXPECT_EQ(field<int32>(each, "int32"), number);
    EXPECT_EQ(field<int64>(each, "int64"), wide);
    EXPECT_EQ(field<bool>(each, "bool"), true);
    EXPECT_EQ(field<entry_ref>(each, "ref").value_or(entry_ref()).FullPath(), "/folder/name");
  }
}

TEST(Message, SurvivesSerializationExceptForItsPointers) {
  const BMessage message = sample();
  BMessage withPointer = message;
  withPointer.AddPointer("pointer", &message);
  MemoryFile stream({});
  ASSERT_EQ(withPointer.Flatten(&stream), B_OK);
  BMessage read = message_of('old_', "old", 1);
  ASSERT_EQ(stream.Seek(0, SEEK_SET), 0);
  ASSERT_EQ(read.Unflatten(&stream), B_OK);
  EXPECT_EQ(read.what, uint32{'abcd'});
  EXPECT_EQ(read.FieldNames(), message.FieldNames());
  EXPECT_EQ(read.Flatten(), message.Flatten());
  EXPECT_NE(read.Unflatten(&stream), B_OK) << "at its end";
  EXPECT_TRUE(read.IsEmpty());
}

TEST(Message, MalformedBytesAreRefused) {
  const auto expect_refused = [](const std::string& bytes) {
    BMessage read = message_of('old_', "old", 1);
    EXPECT_EQ(read.Unflatten(bytes.data(), bytes.size()), B_BAD_VALUE) << bytes.size();
    EXPECT_TRUE(read.IsEmpty());
  };
  const auto flat = [](const BMessage& message) {
    const std::vector<char> bytes = message.Flatten();
    return std::string(bytes.begin(), bytes.end());
  };
  const std::string whole = flat(sample());
  for (size_t length = 0; length < whole.size(); ++length) expect_refused(whole.substr(0, length));
  std::string twice = flat(message_of('twic', "first", 1, "other", 2));
  expect_refused(twice.replace(twice.find("other"), 5, "first"));
  BMessage deep('deep');
  for (int i = 0; i < 40; ++i) deep = message_of('deep', "in", deep);
  expect_refused(flat(deep));
}

TEST(Message, VeryManyFieldsAreReadInLinearTime) {
  constexpr uint32 kFields = 400000; // quadratic time would exceed the time limit of the test
  constexpr size_t kTotalAt = 8, kCountAt = 16, kFieldsAt = 20;
  const std::vector<char> one = message_of('many', "000000", true).Flatten();
  std::string flat(one.begin(), one.begin() + kFieldsAt);
  const std::string first(one.begin() + kFieldsAt, one.end());
  const size_t name = first.find("000000");
  for (uint32 i = 0; i < kFields; ++i)
    flat.append(first).replace(flat.size() - first.size() + name, 6, std::to_string(100000 + i));
  const auto total = static_cast<uint32>(flat.size());
  std::memcpy(&flat[kTotalAt], &total, sizeof total);
  std::memcpy(&flat[kCountAt], &kFields, sizeof kFields);
  BMessage read;
  EXPECT_EQ(read.Unflatten(flat.data(), flat.size()), B_OK);
  EXPECT_EQ(field<bool>(read, "499999"), true);
}
