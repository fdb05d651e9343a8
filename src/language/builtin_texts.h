#pragma once

#include "platform/storage/resources.h"

inline constexpr int32 kBuiltinTextsId = 3000;

/** The resources compiled into the program: the English texts, in the form of a language file. */
BResources builtin_resources();
