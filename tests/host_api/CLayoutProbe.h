#ifndef HOSTAPI_C_LAYOUT_PROBE_H
#define HOSTAPI_C_LAYOUT_PROBE_H

/* Layout facts measured by the C compiler, compared against the C++ compiler's view. */

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
	HOSTAPI_C_SIZEOF_IN_DATA,
	HOSTAPI_C_SIZEOF_OUT_DATA,
	HOSTAPI_C_SIZEOF_PARAM_DEF,
	HOSTAPI_C_SIZEOF_UTIL_CALLBACKS,
	HOSTAPI_C_SIZEOF_LAYER_SUITE,
	HOSTAPI_C_OFFSET_PICA_BASIC,
	HOSTAPI_C_OFFSET_ITERATE_GENERIC,
	HOSTAPI_C_OFFSET_POINT_V,
	HOSTAPI_C_OFFSET_WORLD_GET_FORMAT
};

size_t hostapi_c_layout(int which);

#ifdef __cplusplus
}
#endif

#endif
