#pragma once
// printf-style argument checking for our own formatting functions (the log
// lines, Graphics::formatInto). They all end in the C++ library's vsnprintf,
// which follows the C99 rules (%zu, %lld) on every platform we build for;
// MinGW's GCC would otherwise check them against the older Microsoft rules
// and reject %zu, so name the GNU rules explicitly there.

#if defined(__MINGW32__)
#define VORN_PRINTF_FORMAT(fmt) __attribute__((format(gnu_printf, fmt, fmt + 1)))
#elif defined(__GNUC__)
#define VORN_PRINTF_FORMAT(fmt) __attribute__((format(printf, fmt, fmt + 1)))
#else
#define VORN_PRINTF_FORMAT(fmt)
#endif
