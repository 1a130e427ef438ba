#ifndef SPBASIC_H
#define SPBASIC_H

#include "SPTypes.h"
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

#define kSPBasicSuite        "SP Basic Suite"
#define kSPBasicSuiteVersion 4

/* Entry to every other suite: look one up by name and version, balance each successful
   AcquireSuite with one ReleaseSuite. */
typedef struct SPBasicSuite {
	SPAPI SPErr (*AcquireSuite)(const char *name, int32 version, const void **suite);
	SPAPI SPErr (*ReleaseSuite)(const char *name, int32 version);
	SPAPI SPBoolean (*IsEqual)(const char *token1, const char *token2);
	SPAPI SPErr (*AllocateBlock)(size_t size, void **block);
	SPAPI SPErr (*FreeBlock)(void *block);
	SPAPI SPErr (*ReallocateBlock)(void *block, size_t newSize, void **newblock);
	SPAPI SPErr (*Undefined)(void);
} SPBasicSuite;

#ifdef __cplusplus
}
#endif

#endif /* SPBASIC_H */
