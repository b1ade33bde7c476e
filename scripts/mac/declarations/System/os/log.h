// What the product uses of the unified log.
#pragma once
#include <stdbool.h>
#include <stdint.h>

#if defined(__cplusplus)
extern "C" {
#endif

// https://developer.apple.com/documentation/os/logging
typedef struct os_log_s* os_log_t;
typedef uint8_t os_log_type_t;
enum { OS_LOG_TYPE_DEFAULT = 0 };  // os_log_type_t
os_log_t os_log_create(const char* subsystem, const char* category);
bool os_log_type_enabled(os_log_t log, os_log_type_t type);
void _os_log_impl(void* image, os_log_t log, os_log_type_t type, const char* format, uint8_t* buffer, uint32_t size);
extern char __dso_handle;
#define os_log(log, format, ...)                                                                                      \
  do {                                                                                                                \
    os_log_t os_log_wanted = (log);                                                                                   \
    if (os_log_type_enabled(os_log_wanted, OS_LOG_TYPE_DEFAULT)) {                                                    \
      static const char os_log_text[] __attribute__((section("__TEXT,__oslogstring,cstring_literals"))) = format;     \
      uint8_t os_log_buffer[__builtin_os_log_format_buffer_size(format, __VA_ARGS__)];                                \
      _os_log_impl(&__dso_handle, os_log_wanted, OS_LOG_TYPE_DEFAULT, os_log_text,                                    \
                   (uint8_t*)__builtin_os_log_format(os_log_buffer, format, __VA_ARGS__), sizeof os_log_buffer);      \
    }                                                                                                                 \
  } while (0)

#if defined(__cplusplus)
}
#endif
