#include "platform/interface/bitmap.h"

BBitmap::BBitmap(const void* bytes, size_t size)
    : fBytes(std::make_shared<const std::string>(static_cast<const char*>(bytes), size)) {}
