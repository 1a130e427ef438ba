#ifndef ENTRY_H
#define ENTRY_H

/* Export marker for the module's entry function. */

#if defined(_WIN32)
#define DllExport __declspec(dllexport)
#else
#define DllExport __attribute__((visibility("default")))
#endif

#define AE_ENTRY_POINT "EffectMain"

#endif /* ENTRY_H */
