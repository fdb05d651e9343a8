/** The serialized form of a message, little-endian: "VMSG", uint32 version (1), uint32 bytes of the whole, then a body:
    uint32 what, uint32 count of fields, and for each field uint32 type, uint16 length of the name, the name,
    uint32 count of values, and each value as uint32 length and bytes. A message inside is a body of its own.
    Specifiers, pointers and messengers are left out: they are valid in one process only. */

#include "platform/app/message.h"

#include "platform/app/message_body.h"
#include "platform/support/data_io.h"

#include <bit>
#include <cstring>
#include <unordered_set>

namespace {

static_assert(std::endian::native == std::endian::little, "numbers are copied from memory");

constexpr char kMagic[4] = {'V', 'M', 'S', 'G'};
constexpr uint32 kVersion = 1;
constexpr size_t kHeaderSize = 12;
constexpr int kMaxDepth = 32;
constexpr size_t kMaxSize = size_t{64} << 20; // no record of ours comes near it

using FlatBytes = std::string_view;

class FlatWriter {
public:
  template <typename T>
  void Number(T value) {
    Bytes({reinterpret_cast<const char*>(&value), sizeof value});
  }
  void Bytes(std::string_view bytes) { fBytes.append(bytes); }
  void Sized(std::string_view bytes) {
    Number(static_cast<uint32>(bytes.size()));
    Bytes(bytes);
  }
  template <typename T>
  void SizedNumber(T value) {
    Number(static_cast<uint32>(sizeof value));
    Number(value);
  }
  std::string Take() { return std::move(fBytes); }

private:
  std::string fBytes;
};

class FlatReader {
public:
  explicit FlatReader(std::string_view bytes) : fLeft(bytes) {}
  template <typename T>
  bool Number(T* value) {
    if (fLeft.size() < sizeof *value) return false;
    std::memcpy(value, fLeft.data(), sizeof *value);
    fLeft.remove_prefix(sizeof *value);
    return true;
  }
  bool Bytes(size_t count, std::string_view* bytes) {
    if (fLeft.size() < count) return false;
    *bytes = fLeft.substr(0, count);
    fLeft.remove_prefix(count);
    return true;
  }
  bool IsAtEnd() const { return fLeft.empty(); }
  size_t Left() const { return fLeft.size(); }

private:
  std::string_view fLeft;
};

bool is_left_out(type_code type) {
  return type == B_POINTER_TYPE || type == B_MESSENGER_TYPE;
}

template <typename T>
bool read_exactly(std::string_view bytes, T* value) {
  FlatReader reader(bytes);
  return reader.Number(value) && reader.IsAtEnd();
}

std::string ref_bytes(const entry_ref& ref) {
  return ref.directory + '\0' + ref.name;
}

bool read_ref(std::string_view bytes, entry_ref* ref) {
  const size_t end = bytes.find('\0');
  if (end == std::string_view::npos) return false;
  *ref = {std::string(bytes.substr(0, end)), std::string(bytes.substr(end + 1))};
  return true;
}

/** The bytes of a raw value follow one that tells whether all items of the field have the same size. */
std::string raw_bytes(const RawValue& raw) {
  std::string bytes;
  bytes.push_back(raw.isFixedSize ? '\1' : '\0');
  return bytes.append(raw.bytes.data(), raw.bytes.size());
}

template <typename T>
bool read_number_into(std::string_view bytes, FieldValue* value) {
  T number{};
  if (!read_exactly(bytes, &number)) return false;
  *value = number;
  return true;
}

} // namespace

bool is_interpreted(type_code type) {
  switch (type) {
  case B_BOOL_TYPE:
  case B_INT32_TYPE:
  case B_INT64_TYPE:
  case B_FLOAT_TYPE:
  case B_DOUBLE_TYPE:
  case B_POINT_TYPE:
  case B_RECT_TYPE:
  case B_STRING_TYPE:
  case B_REF_TYPE:
    return true;
  default:
    return false;
  }
}

bool interpret(type_code type, std::string_view bytes, FieldValue* value) {
  switch (type) {
  case B_BOOL_TYPE: {
    uint8 flag = 0;
    if (!read_exactly(bytes, &flag)) return false;
    *value = flag != 0;
    return true;
  }
  case B_INT32_TYPE:
    return read_number_into<int32>(bytes, value);
  case B_INT64_TYPE:
    return read_number_into<int64>(bytes, value);
  case B_FLOAT_TYPE:
    return read_number_into<float>(bytes, value);
  case B_DOUBLE_TYPE:
    return read_number_into<double>(bytes, value);
  case B_POINT_TYPE:
    return read_number_into<BPoint>(bytes, value);
  case B_RECT_TYPE:
    return read_number_into<BRect>(bytes, value);
  case B_STRING_TYPE:
    *value = text_value(bytes);
    return true;
  case B_REF_TYPE: {
    entry_ref ref;
    if (!read_ref(bytes, &ref)) return false;
    *value = ref;
    return true;
  }
  default:
    return false;
  }
}

namespace {

bool read_value(type_code type, std::string_view bytes, FieldValue* value) {
  if (is_interpreted(type)) return interpret(type, bytes, value);
  if (bytes.empty() || is_left_out(type)) return false;
  *value = RawValue{{bytes.begin() + 1, bytes.end()}, bytes.front() != '\0'};
  return true;
}

struct ValueWriter {
  FlatWriter* out;
  type_code type;
  void operator()(bool value) const { out->SizedNumber(static_cast<uint8>(value)); }
  void operator()(int32 value) const { out->SizedNumber(value); }
  void operator()(int64 value) const { out->SizedNumber(value); }
  void operator()(float value) const { out->SizedNumber(value); }
  void operator()(double value) const { out->SizedNumber(value); }
  void operator()(BPoint value) const { out->SizedNumber(value); }
  void operator()(const BRect& value) const { out->SizedNumber(value); }
  void operator()(const std::string& value) const { out->Sized({value.c_str(), value.size() + 1}); }
  void operator()(const entry_ref& value) const { out->Sized(ref_bytes(value)); }
  void operator()(const RawValue& value) const {
    if (type == B_STRING_TYPE) return out->Sized({value.bytes.data(), value.bytes.size()});
    out->Sized(raw_bytes(value));
  }
  void operator()(const BMessage& value) const {
    const std::vector<char> flat = value.Flatten();
    out->Sized(std::string_view(flat.data() + kHeaderSize, flat.size() - kHeaderSize));
  }
  void operator()(const BMessenger&) const {}
  void operator()(const void*) const {}
};

void write_field(const MessageField& field, FlatWriter* out) {
  out->Number(field.type);
  out->Number(static_cast<uint16>(field.name.size()));
  out->Bytes(field.name);
  out->Number(static_cast<uint32>(field.values.size()));
  for (const FieldValue& value : field.values) std::visit(ValueWriter{out, field.type}, value);
}

} // namespace

/** Parses bodies. Nested for access to the message. */
struct BMessage::BodyReader {
  static bool ReadBody(FlatBytes bytes, int depth, BMessage* message) {
    FlatReader reader(bytes);
    uint32 fieldCount = 0;
    if (depth > kMaxDepth || !reader.Number(&message->what) || !reader.Number(&fieldCount)) return false;
    std::unordered_set<std::string> names; // there may be very many
    for (uint32 i = 0; i < fieldCount; ++i) {
      MessageField field;
      if (!ReadField(&reader, depth, &field) || !names.insert(field.name).second) return false;
      message->fBody->fields.push_back(std::move(field));
    }
    return reader.IsAtEnd();
  }

  static bool ReadField(FlatReader* reader, int depth, MessageField* field) {
    uint16 nameLength = 0;
    uint32 valueCount = 0;
    FlatBytes name;
    if (!reader->Number(&field->type) || !reader->Number(&nameLength) || !reader->Bytes(nameLength, &name) ||
        !reader->Number(&valueCount) || name.find('\0') != FlatBytes::npos) {
      return false;
    }
    field->name = name;
    // Each value takes at least its length field: a false count runs out of bytes before it runs out of memory.
    for (uint32 i = 0; i < valueCount; ++i) {
      uint32 length = 0;
      FlatBytes bytes;
      FieldValue value;
      if (!reader->Number(&length) || !reader->Bytes(length, &bytes) || !ReadValue(field->type, bytes, depth, &value)) {
        return false;
      }
      field->values.push_back(std::move(value));
    }
    return valueCount > 0;
  }

  static bool ReadValue(type_code type, FlatBytes bytes, int depth, FieldValue* value) {
    if (type != B_MESSAGE_TYPE) return read_value(type, bytes, value);
    BMessage message;
    if (!ReadBody(bytes, depth + 1, &message)) return false;
    *value = std::move(message);
    return true;
  }
};

std::vector<char> BMessage::Flatten() const {
  FlatWriter body;
  uint32 fieldCount = 0;
  for (const MessageField& field : fBody->fields) fieldCount += !is_left_out(field.type);
  body.Number(what);
  body.Number(fieldCount);
  for (const MessageField& field : fBody->fields) {
    if (!is_left_out(field.type)) write_field(field, &body);
  }
  const std::string bytes = body.Take();
  FlatWriter whole;
  whole.Bytes({kMagic, sizeof kMagic});
  whole.Number(kVersion);
  whole.Number(static_cast<uint32>(kHeaderSize + bytes.size()));
  whole.Bytes(bytes);
  const std::string flat = whole.Take();
  return {flat.begin(), flat.end()};
}

status_t BMessage::Flatten(BPositionIO* stream) const {
  const std::vector<char> bytes = Flatten();
  for (size_t done = 0; done < bytes.size();) {
    const ssize_t written = stream->Write(bytes.data() + done, bytes.size() - done);
    if (written <= 0) return written < 0 ? static_cast<status_t>(written) : B_IO_ERROR;
    done += static_cast<size_t>(written);
  }
  return B_OK;
}

status_t BMessage::Unflatten(const void* bytes, size_t size) {
  *this = BMessage();
  FlatReader reader({static_cast<const char*>(bytes), size});
  FlatBytes magic;
  uint32 version = 0;
  uint32 total = 0;
  if (!reader.Bytes(sizeof kMagic, &magic) || magic != FlatBytes(kMagic, sizeof kMagic) || !reader.Number(&version) ||
      version != kVersion || !reader.Number(&total) || total < kHeaderSize || total > size) {
    return B_BAD_VALUE;
  }
  FlatBytes body;
  if (!reader.Bytes(total - kHeaderSize, &body) || !BodyReader::ReadBody(body, 0, this)) {
    *this = BMessage();
    return B_BAD_VALUE;
  }
  return B_OK;
}

status_t BMessage::Unflatten(BPositionIO* stream) {
  *this = BMessage();
  char header[kHeaderSize];
  if (stream->Read(header, sizeof header) != static_cast<ssize_t>(sizeof header)) return B_BAD_VALUE;
  uint32 total = 0;
  std::memcpy(&total, header + 8, sizeof total);
  off_t size = 0;
  if (stream->GetSize(&size) != B_OK || total < kHeaderSize || total > kMaxSize || total > size) return B_BAD_VALUE;
  std::vector<char> bytes(header, header + sizeof header);
  bytes.resize(total);
  for (size_t done = sizeof header; done < bytes.size();) {
    const ssize_t count = stream->Read(bytes.data() + done, bytes.size() - done);
    if (count <= 0) return B_BAD_VALUE;
    done += static_cast<size_t>(count);
  }
  return Unflatten(bytes.data(), bytes.size());
}
