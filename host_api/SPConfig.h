#ifndef SPCONFIG_H
#define SPCONFIG_H

/* Platform selection for the PICA headers. Linux selects neither environment; the types that
   depend on it take the macOS form there. */

#if defined(__APPLE__) && !defined(MAC_ENV)
#define MAC_ENV 1
#endif

#if defined(_WIN32) && !defined(WIN_ENV)
#define WIN_ENV 1
#endif

#endif /* SPCONFIG_H */
