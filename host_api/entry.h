#ifndef ENTRY_H
#define ENTRY_H

/* Export marker for the module's entry function. Relies on AEConfig.h having been included
   first, as every plug-in does. */

#ifdef AE_OS_WIN
#define DllExport __declspec(dllexport)
#elif defined AE_OS_MAC
#define DllExport __attribute__((visibility("default")))
#elif defined(__linux__)
#define DllExport __attribute__((visibility("default"))) /* our own Linux build */
#endif

#define AE_ENTRY_POINT "EffectMain"

/* The value of a PiPL's AE_Reserved_Info ('aeFL') property. */
#define AE_RESERVED_INFO 8

#endif /* ENTRY_H */
