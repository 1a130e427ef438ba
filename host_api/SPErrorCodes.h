#ifndef SPERRORCODES_H
#define SPERRORCODES_H

/* PICA error codes (kSPNoError, 0, is in SPTypes.h). The host spells this one as the
   four-character constant 'S!Fd'; it is written out here so that including the header never
   raises multi-character-constant warnings. */

#define kSPSuiteNotFoundError 0x53214664   /* 'S!Fd': AcquireSuite found no such name/version */

#endif /* SPERRORCODES_H */
