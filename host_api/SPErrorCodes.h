#ifndef SPERRORCODES_H
#define SPERRORCODES_H

/* PICA error codes. Callers of this subset only test for kSPNoError (SPTypes.h); the host
   reports every other failure as a non-zero SPErr. */

#endif /* SPERRORCODES_H */
