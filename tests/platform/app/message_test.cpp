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
  EXPECT_EQ(message.FindString("text", 2, &text), B_BAD_INDEX);
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

TEST(Message, SurvivesSerialization) {
  const BMessage message = sample();
  MemoryFile stream({});
  ASSERT_EQ(message.Flatten(&stream), B_OK);
  ASSERT_EQ(stream.Seek(0, SEEK_SET), 0);
  BMessage read;
  ASSERT_EQ(read.Unflatten(&stream), B_OK);
  EXPECT_EQ(read.what, uint32{'abcd'});
  EXPECT_EQ(read.FieldNames(), message.FieldNames());
  EXPECT_EQ(read.Flatten(), message.Flatten());
}

TEST(Message, PointersAreNotSerialized) {
  EXPECT_FALSE(reread(message_of('ptr_', "pointer", static_cast<void*>(nullptr))).HasField("pointer"));
}

TEST(Message, TruncatedBytesAreRefused) {
  const std::vector<char> flat = sample().Flatten();
  for (size_t length = 0; length < flat.size(); ++length) {
    BMessage read;
    EXPECT_NE(read.Unflatten(flat.data(), length), B_OK) << length;
    EXPECT_TRUE(read.IsEmpty());
  }
}

TEST(Message, AFieldThatComesTwiceIsRefused) {
  const std::vector<char> flat = message_of('twic', "first", 1, "other", 2).Flatten();
  std::string bytes(flat.begin(), flat.end());
  bytes.replace(bytes.find("other"), 5, "first");
  BMessage read;
  EXPECT_EQ(read.Unflatten(bytes.data(), bytes.size()), B_BAD_VALUE);
}

TEST(Message, NestingIsBounded) {
  BMessage message('deep');
  for (int i = 0; i < 40; ++i) message = message_of('deep', "in", message);
  const std::vector<char> flat = message.Flatten();
  BMessage read;
  EXPECT_EQ(read.Unflatten(flat.data(), flat.size()), B_BAD_VALUE);
}

TEST(Message, VeryManyFieldsAreReadInLinearTime) {
  constexpr uint32 kFields = 400000; // quadratic time would exceed the time limit of the test
  std::string body("abcd");
  const auto number = [&](auto value) { body.append(reinterpret_cast<const char*>(&value), sizeof value); };
  number(kFields);
  for (uint32 i = 0; i < kFields; ++i) {
    number(uint32{B_BOOL_TYPE});
    const std::string name = std::to_string(i);
    number(static_cast<uint16>(name.size()));
    body += name;
    number(uint32{1});
    number(uint32{1});
    number(uint8{1});
  }
  std::string flat("VMSG");
  flat.append("\1\0\0\0", 4);
  const uint32 total = static_cast<uint32>(12 + body.size());
  flat.append(reinterpret_cast<const char*>(&total), sizeof total).append(body);
  BMessage read;
  EXPECT_EQ(read.Unflatten(flat.data(), flat.size()), B_OK);
}
