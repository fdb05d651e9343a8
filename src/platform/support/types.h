#pragma once

/** Integer types, status codes and type codes. */

#include <climits>
#include <cstddef>
#include <cstdint>

using uint8 = std::uint8_t;
using int16 = std::int16_t;
using uint16 = std::uint16_t;
using int32 = std::int32_t;
using uint32 = std::uint32_t;
using int64 = std::int64_t;
using uint64 = std::uint64_t;

/** 0 is success, every error is negative. */
using status_t = int32;
/** Microseconds; points in time count from an arbitrary start on the monotonic clock. */
using bigtime_t = int64;
using type_code = uint32;
using thread_id = int32;
using sem_id = int32;
using port_id = int32;

inline constexpr bigtime_t B_INFINITE_TIMEOUT = INT64_MAX;

enum : status_t {
  B_OK = 0,
  B_ERROR = -1,
  B_NO_MEMORY = INT32_MIN,
  B_IO_ERROR,
  B_PERMISSION_DENIED,
  B_BAD_INDEX,
  B_BAD_TYPE,
  B_BAD_VALUE,
  B_NAME_NOT_FOUND,
  B_NAME_IN_USE,
  B_TIMED_OUT,
  B_INTERRUPTED,
  B_WOULD_BLOCK,
  B_NO_INIT,
  B_BAD_THREAD_ID,
  B_BAD_SEM_ID,
  B_BAD_PORT_ID,
  B_ENTRY_NOT_FOUND,
  B_FILE_EXISTS,
  B_IS_A_DIRECTORY,
  B_NOT_A_DIRECTORY,
  B_DEVICE_FULL,
  B_FILE_TOO_LARGE,
  B_BAD_HANDLER,
  B_ALREADY_RUNNING,
  B_LAUNCH_FAILED,
  B_NO_REPLY,
  B_MISMATCHED_VALUES,
  B_MESSAGE_TOO_LARGE,
};

enum : type_code {
  B_ANY_TYPE = 'ANYT',
  B_BOOL_TYPE = 'BOOL',
  B_INT32_TYPE = 'LONG',
  B_INT64_TYPE = 'LLNG',
  B_FLOAT_TYPE = 'FLOT',
  B_DOUBLE_TYPE = 'DBLE',
  B_STRING_TYPE = 'CSTR',
  B_POINT_TYPE = 'BPNT',
  B_RECT_TYPE = 'RECT',
  B_RAW_TYPE = 'RAWT',
  B_POINTER_TYPE = 'PNTR',
  B_MESSAGE_TYPE = 'MSGG',
  B_MESSENGER_TYPE = 'MSNG',
  B_REF_TYPE = 'RREF',
};
