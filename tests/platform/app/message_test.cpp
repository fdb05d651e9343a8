#include "platform/app/message.h"

#include "tests/support/memory_file.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

BMessage sample() {
  BMessage message('abcd');
  message.AddString("text", "日本");
  message.AddString("text", "second");
  message.AddRect("rect", {1, 2, 3, 4});
  message.AddInt64("wide", -5);
  message.AddData("real", B_DOUBLE_TYPE, "\x1\x2\x3\x4\x5\x6\x7", 8);
  const entry_ref ref{"/folder", "name"};
  message.AddRef("ref", &ref);
  const uint8 color[] = {1, 2, 3, 4};
  message.AddData("color", B_RAW_TYPE, color, sizeof color);
  BMessage inside('in');
  inside.AddBool("yes", true);
  message.AddMessage("inside", &inside);
  return message;
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
}

TEST(Message, BytesOfTextTypeKeepTheirLength) {
  BMessage message;
  const std::string bytes("a\0b", 3);
  message.AddData("raw", B_STRING_TYPE, bytes.data(), bytes.size());
  message.AddData("unended", B_STRING_TYPE, "abc", 3);
  message.AddData("text", B_STRING_TYPE, "abc", 4);
  BMessage copy;
  const std::vector<char> flat = message.Flatten();
  ASSERT_EQ(copy.Unflatten(flat.data(), flat.size()), B_OK);
  for (const auto& [name, size] : {std::pair{"raw", 3}, {"unended", 3}, {"text", 4}}) {
    const void* data = nullptr;
    ssize_t length = 0;
    EXPECT_EQ(copy.FindData(name, B_STRING_TYPE, &data, &length), B_OK);
    EXPECT_EQ(length, size) << name;
  }
  std::string text;
  EXPECT_EQ(copy.FindString("raw", &text), B_OK);
  EXPECT_EQ(text, "a");
}

TEST(Message, NumbersAddedAsBytesAreFoundAsNumbersAlsoAfterSerialization) {
  BMessage message('numb');
  const int32 number = -7;
  const int64 wide = int64{1} << 40;
  const uint8 yes = 1;
  EXPECT_EQ(message.AddData("int32", B_INT32_TYPE, &number, sizeof number), B_OK);
  EXPECT_EQ(message.AddData("int64", B_INT64_TYPE, &wide, sizeof wide), B_OK);
  EXPECT_EQ(message.AddData("bool", B_BOOL_TYPE, &yes, sizeof yes), B_OK);
  EXPECT_EQ(message.AddData("ref", B_REF_TYPE, "/folder\0name", 12), B_OK);
  for (const type_code type : {B_INT32_TYPE, B_BOOL_TYPE, B_RECT_TYPE})
    EXPECT_EQ(message.AddData("other size", type, "12345", 5), B_BAD_VALUE);
  for (const type_code type : {B_POINTER_TYPE, B_MESSENGER_TYPE, B_MESSAGE_TYPE})
    EXPECT_EQ(message.AddData("no bytes", type, &wide, sizeof wide), B_BAD_TYPE);
  EXPECT_EQ(message.AddInt32(std::string(70000, 'n').c_str(), 1), B_BAD_VALUE) << "longer than the format allows";
  const std::vector<char> flat = message.Flatten();
  BMessage read;
  ASSERT_EQ(read.Unflatten(flat.data(), flat.size()), B_OK);
  for (const BMessage& each : {message, read}) {
    EXPECT_EQ(each.FieldNames(), (std::vector<std::string>{"int32", "int64", "bool", "ref"}));
    int32 found = 0;
    bool isSet = false;
    entry_ref ref;
    const void* bytes = nullptr;
    ssize_t size = 0;
    EXPECT_EQ(each.FindInt32("int32", &found), B_OK);
    EXPECT_EQ(found, number);
    EXPECT_EQ(each.FindBool("bool", &isSet), B_OK);
    EXPECT_TRUE(isSet);
    EXPECT_EQ(each.FindRef("ref", &ref), B_OK);
    EXPECT_EQ(ref.FullPath(), "/folder/name");
    ASSERT_EQ(each.FindData("int64", B_INT64_TYPE, &bytes, &size), B_OK);
    EXPECT_TRUE(size == sizeof wide && std::memcmp(bytes, &wide, sizeof wide) == 0);
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
  BMessage message;
  message.AddPointer("pointer", &message);
  const std::vector<char> flat = message.Flatten();
  BMessage read;
  ASSERT_EQ(read.Unflatten(flat.data(), flat.size()), B_OK);
  EXPECT_FALSE(read.HasField("pointer"));
}

TEST(Message, TruncatedBytesAreRefused) {
  const std::vector<char> flat = sample().Flatten();
  for (size_t length = 0; length < flat.size(); ++length) {
    BMessage read;
    EXPECT_NE(read.Unflatten(flat.data(), length), B_OK) << length;
    EXPECT_TRUE(read.IsEmpty());
  }
}

TEST(Message, NestingIsBounded) {
  BMessage message('deep');
  for (int i = 0; i < 40; ++i) {
    BMessage outer('deep');
    outer.AddMessage("in", &message);
    message = outer;
  }
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
