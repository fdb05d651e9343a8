#include "platform/app/message.h"

#include "platform/app/message_body.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

MessageField* BMessage::Body::Find(const char* name) {
  const auto found = std::find_if(fields.begin(), fields.end(), [&](const MessageField& f) { return f.name == name; });
  return found == fields.end() ? nullptr : &*found;
}

FieldValue text_value(std::string_view bytes) {
  if (bytes.find('\0') + 1 == bytes.size() && !bytes.empty()) return std::string(bytes.substr(0, bytes.size() - 1));
  return RawValue{{bytes.begin(), bytes.end()}, false};
}

const MessageField* BMessage::Body::Find(const char* name) const {
  return const_cast<Body*>(this)->Find(name);
}

BMessage::LazyBody::LazyBody() noexcept = default;
BMessage::LazyBody::LazyBody(const LazyBody& other)
    : fBody(other.fBody ? std::make_unique<Body>(*other.fBody) : nullptr) {}
BMessage::LazyBody::LazyBody(LazyBody&& other) noexcept = default;
BMessage::LazyBody& BMessage::LazyBody::operator=(const LazyBody& other) {
  return *this = LazyBody(other);
}
BMessage::LazyBody& BMessage::LazyBody::operator=(LazyBody&& other) noexcept = default;
BMessage::LazyBody::~LazyBody() = default;

BMessage::Body* BMessage::LazyBody::operator->() {
  if (!fBody) fBody = std::make_unique<Body>();
  return fBody.get();
}

const BMessage::Body* BMessage::LazyBody::operator->() const {
  static const Body* const empty = new Body; // never destroyed: threads read messages while the process ends
  return fBody ? fBody.get() : empty;
}

BMessage::BMessage() noexcept = default;
BMessage::BMessage(uint32 code) noexcept : what(code) {}
BMessage::BMessage(const BMessage& other) = default;
BMessage& BMessage::operator=(const BMessage& other) = default;
BMessage::BMessage(BMessage&& other) noexcept = default;
BMessage& BMessage::operator=(BMessage&& other) noexcept = default;
BMessage::~BMessage() = default;

namespace {

/** The serialized form has two bytes for the length. */
constexpr size_t kMaxFieldName = 65535;

status_t find_value(const MessageField* field, int32 index, const FieldValue** value) {
  if (field == nullptr) return B_NAME_NOT_FOUND;
  if (index < 0 || static_cast<size_t>(index) >= field->values.size()) return B_BAD_INDEX;
  *value = &field->values[static_cast<size_t>(index)];
  return B_OK;
}

template <typename T>
status_t find_typed(const MessageField* field, type_code type, int32 index, T* value) {
  const FieldValue* found = nullptr;
  if (const status_t status = find_value(field, index, &found); status != B_OK) return status;
  if (field->type != type) return B_BAD_TYPE;
  *value = std::get<T>(*found);
  return B_OK;
}

/** A number's bytes, as they are stored. */
bool find_number_bytes(const FieldValue& value, const void** bytes, ssize_t* size) {
  return std::visit(
      [&](const auto& stored) {
        using T = std::decay_t<decltype(stored)>;
        constexpr bool kIsNumber = std::is_arithmetic_v<T> || std::is_same_v<T, BPoint> || std::is_same_v<T, BRect>;
        if constexpr (kIsNumber) {
          *bytes = &stored;
          *size = sizeof stored;
        }
        return kIsNumber;
      },
      value);
}

status_t add_value(std::vector<MessageField>* fields, const char* name, type_code type, FieldValue value) {
  if (name == nullptr || std::strlen(name) > kMaxFieldName) return B_BAD_VALUE;
  const auto found = std::find_if(fields->begin(), fields->end(), [&](const auto& f) { return f.name == name; });
  if (found == fields->end()) {
    MessageField field{name, type, {}};
    field.values.push_back(std::move(value));
    fields->push_back(std::move(field));
    return B_OK;
  }
  if (found->type != type) return B_BAD_TYPE;
  found->values.push_back(std::move(value));
  return B_OK;
}

} // namespace

status_t BMessage::AddBool(const char* name, bool value) {
  return add_value(&fBody->fields, name, B_BOOL_TYPE, value);
}
status_t BMessage::AddInt32(const char* name, int32 value) {
  return add_value(&fBody->fields, name, B_INT32_TYPE, value);
}
status_t BMessage::AddInt64(const char* name, int64 value) {
  return add_value(&fBody->fields, name, B_INT64_TYPE, value);
}
status_t BMessage::AddFloat(const char* name, float value) {
  return add_value(&fBody->fields, name, B_FLOAT_TYPE, value);
}
status_t BMessage::AddString(const char* name, std::string_view value) {
  return add_value(&fBody->fields, name, B_STRING_TYPE, std::string(value));
}
status_t BMessage::AddPoint(const char* name, BPoint value) {
  return add_value(&fBody->fields, name, B_POINT_TYPE, value);
}
status_t BMessage::AddRect(const char* name, BRect value) {
  return add_value(&fBody->fields, name, B_RECT_TYPE, value);
}
status_t BMessage::AddRef(const char* name, const entry_ref* value) {
  return value ? add_value(&fBody->fields, name, B_REF_TYPE, *value) : B_BAD_VALUE;
}
status_t BMessage::AddMessage(const char* name, const BMessage* value) {
  if (value == nullptr) return B_BAD_VALUE;
  BMessage stored(*value);
  stored.fEnvelope.reset(); // not a delivery any more
  return add_value(&fBody->fields, name, B_MESSAGE_TYPE, std::move(stored));
}
status_t BMessage::AddMessenger(const char* name, const BMessenger& value) {
  return add_value(&fBody->fields, name, B_MESSENGER_TYPE, value);
}
status_t BMessage::AddPointer(const char* name, const void* value) {
  return add_value(&fBody->fields, name, B_POINTER_TYPE, value);
}

status_t BMessage::AddData(const char* name, type_code type, const void* bytes, size_t size, bool isFixedSize) {
  if (bytes == nullptr && size > 0) return B_BAD_VALUE;
  const char* const start = static_cast<const char*>(bytes);
  FieldValue value;
  if (is_interpreted(type)) {
    return interpret(type, {start, size}, &value) ? add_value(&fBody->fields, name, type, std::move(value))
                                                  : B_BAD_VALUE;
  }
  // These have Add functions of their own; as raw bytes no Find function would return them.
  if (type == B_POINTER_TYPE || type == B_MESSENGER_TYPE || type == B_MESSAGE_TYPE) return B_BAD_TYPE;
  return add_value(&fBody->fields, name, type, RawValue{{start, start + size}, isFixedSize});
}

status_t BMessage::FindBool(const char* name, int32 index, bool* value) const {
  return find_typed(fBody->Find(name), B_BOOL_TYPE, index, value);
}
status_t BMessage::FindInt32(const char* name, int32 index, int32* value) const {
  return find_typed(fBody->Find(name), B_INT32_TYPE, index, value);
}
status_t BMessage::FindInt64(const char* name, int32 index, int64* value) const {
  return find_typed(fBody->Find(name), B_INT64_TYPE, index, value);
}
status_t BMessage::FindFloat(const char* name, int32 index, float* value) const {
  return find_typed(fBody->Find(name), B_FLOAT_TYPE, index, value);
}
status_t BMessage::FindDouble(const char* name, int32 index, double* value) const {
  return find_typed(fBody->Find(name), B_DOUBLE_TYPE, index, value);
}
status_t BMessage::FindString(const char* name, int32 index, std::string* value) const {
  const void* bytes = nullptr;
  ssize_t size = 0;
  const status_t status = FindData(name, B_STRING_TYPE, index, &bytes, &size);
  if (status != B_OK) return status;
  const char* const start = static_cast<const char*>(bytes);
  value->assign(start, strnlen(start, static_cast<size_t>(size)));
  return B_OK;
}
status_t BMessage::FindRect(const char* name, int32 index, BRect* value) const {
  return find_typed(fBody->Find(name), B_RECT_TYPE, index, value);
}
status_t BMessage::FindRef(const char* name, int32 index, entry_ref* value) const {
  return find_typed(fBody->Find(name), B_REF_TYPE, index, value);
}
status_t BMessage::FindMessage(const char* name, int32 index, BMessage* value) const {
  return find_typed(fBody->Find(name), B_MESSAGE_TYPE, index, value);
}
status_t BMessage::FindMessenger(const char* name, BMessenger* value) const {
  return find_typed(fBody->Find(name), B_MESSENGER_TYPE, 0, value);
}

status_t BMessage::FindPointer(const char* name, void** value) const {
  const void* found = nullptr;
  const status_t status = find_typed(fBody->Find(name), B_POINTER_TYPE, 0, &found);
  if (status == B_OK) *value = const_cast<void*>(found);
  return status;
}

status_t BMessage::FindData(const char* name, type_code type, int32 index, const void** bytes, ssize_t* size) const {
  const MessageField* field = fBody->Find(name);
  const FieldValue* found = nullptr;
  if (const status_t status = find_value(field, index, &found); status != B_OK) return status;
  if (type != B_ANY_TYPE && field->type != type) return B_BAD_TYPE;
  if (const auto* text = std::get_if<std::string>(found)) {
    *bytes = text->c_str();
    *size = static_cast<ssize_t>(text->size() + 1);
    return B_OK;
  }
  if (const auto* raw = std::get_if<RawValue>(found)) {
    *bytes = raw->bytes.data();
    *size = static_cast<ssize_t>(raw->bytes.size());
    return B_OK;
  }
  return find_number_bytes(*found, bytes, size) ? B_OK : B_BAD_TYPE;
}

// A find function leaves its output unchanged when it fails.
bool BMessage::GetBool(const char* name, bool absent) const {
  static_cast<void>(FindBool(name, &absent));
  return absent;
}
int32 BMessage::GetInt32(const char* name, int32 absent, int32 index) const {
  static_cast<void>(FindInt32(name, index, &absent));
  return absent;
}
int64 BMessage::GetInt64(const char* name, int64 absent) const {
  static_cast<void>(FindInt64(name, &absent));
  return absent;
}
float BMessage::GetFloat(const char* name, float absent) const {
  static_cast<void>(FindFloat(name, &absent));
  return absent;
}
std::string BMessage::GetString(const char* name, std::string absent, int32 index) const {
  static_cast<void>(FindString(name, index, &absent));
  return absent;
}

bool BMessage::HasField(const char* name) const {
  return fBody->Find(name) != nullptr;
}

std::vector<std::string> BMessage::FieldNames() const {
  std::vector<std::string> names;
  for (const MessageField& field : fBody->fields) names.push_back(field.name);
  return names;
}

status_t BMessage::RemoveName(const char* name) {
  return std::erase_if(fBody->fields, [&](const MessageField& f) { return f.name == name; }) > 0 ? B_OK
                                                                                                 : B_NAME_NOT_FOUND;
}

bool BMessage::IsEmpty() const {
  return fBody->fields.empty();
}

namespace {

status_t add_specifier(std::vector<MessageSpecifier>* specifiers, size_t* unresolved, MessageSpecifier added) {
  if (*unresolved != specifiers->size()) return B_ERROR; // some are resolved already
  specifiers->push_back(std::move(added));
  *unresolved = specifiers->size();
  return B_OK;
}

} // namespace

status_t BMessage::AddSpecifier(const char* property) {
  return add_specifier(&fBody->specifiers, &fBody->unresolved, {property, B_DIRECT_SPECIFIER, 0});
}
status_t BMessage::AddSpecifier(const char* property, int32 index) {
  return add_specifier(&fBody->specifiers, &fBody->unresolved, {property, B_INDEX_SPECIFIER, index});
}
bool BMessage::HasSpecifiers() const {
  return !fBody->specifiers.empty();
}

status_t BMessage::GetCurrentSpecifier(std::string* property, uint32* form, int32* index) const {
  if (fBody->unresolved == 0) return B_BAD_INDEX;
  const MessageSpecifier& current = fBody->specifiers[fBody->unresolved - 1];
  if (property) *property = current.property;
  if (form) *form = current.form;
  if (index && current.form == B_INDEX_SPECIFIER) *index = current.index;
  return B_OK;
}

status_t BMessage::PopSpecifier() {
  if (fBody->unresolved == 0) return B_BAD_INDEX;
  --fBody->unresolved;
  return B_OK;
}
