#ifndef _H_AE_CONFIG
#define _H_AE_CONFIG

/* Platform, processor and byte-order switches. Every plug-in includes this header before any
   other host header: the headers and entry.h test these macros but do not include it.
   The SDK knows only Windows and macOS. The Linux branch, for the emulated host's build,
   defines no platform macro of its own, so no module code can come to depend on one. */

#if defined(_WIN32)
#define AE_OS_WIN
#elif defined(__APPLE__) || defined(REZ)
#define AE_OS_MAC
#elif defined(__linux__)
/* our own build: no SDK platform macro applies */
#else
#error "unrecognized AE platform"
#endif

#if defined(_M_X64) || defined(__amd64__) || defined(__x86_64__)
#define AE_PROC_INTELx64
#elif defined(__arm64__) || defined(__aarch64__)
#define AE_PROC_ARM64
#elif defined(_M_IX86) || defined(__i386__)
#define AE_PROC_INTEL
#else
#error "unrecognized AE processor"
#endif

#define AE_LITTLE_ENDIAN

#endif /* _H_AE_CONFIG */
