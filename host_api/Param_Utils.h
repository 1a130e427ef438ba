#ifndef PARAM_UTILS_H
#define PARAM_UTILS_H

/* Parameter registration helpers. Each fills the local `PF_ParamDef def`, appends it through
   PF_ADD_PARAM(in_data, -1, &def) and returns the error from the enclosing function when the
   host refuses it. Only the ...X forms (and PF_ADD_CHECKBOXX) clear `def` first. Names are
   copied locally, never through the host. */

#include <string.h>
#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_Macros.h"

/* strncpy that always terminates. */
#define PF_STRNNCPY(DST, SRC, SIZE) \
	do { \
		size_t priv_len = strlen(SRC); \
		if (priv_len >= (size_t)(SIZE)) { priv_len = (size_t)(SIZE) - 1; } \
		memcpy((DST), (SRC), priv_len); \
		(DST)[priv_len] = 0; \
	} while (0)

#define PF_PRIV_APPEND_DEF() \
	do { \
		PF_Err priv_err = PF_ADD_PARAM(in_data, -1, &def); \
		if (priv_err != PF_Err_NONE) { return priv_err; } \
	} while (0)

#define PF_ADD_LAYER(NAME, DFLT, ID) \
	do { \
		def.param_type = PF_Param_LAYER; \
		PF_STRNNCPY(def.PF_DEF_NAME, (NAME), sizeof(def.PF_DEF_NAME)); \
		def.u.ld.dephault = (DFLT); \
		def.uu.id = (ID); \
		PF_PRIV_APPEND_DEF(); \
	} while (0)

#define PF_ADD_TOPIC(NAME, ID) \
	do { \
		def.param_type = PF_Param_GROUP_START; \
		PF_STRNNCPY(def.PF_DEF_NAME, (NAME), sizeof(def.PF_DEF_NAME)); \
		def.uu.id = (ID); \
		PF_PRIV_APPEND_DEF(); \
	} while (0)

#define PF_ADD_TOPICX(NAME, FLAGS, ID) \
	do { \
		AEFX_CLR_STRUCT(def); \
		def.flags = (FLAGS); \
		PF_ADD_TOPIC(NAME, ID); \
	} while (0)

#define PF_END_TOPIC(ID) \
	do { \
		def.param_type = PF_Param_GROUP_END; \
		def.uu.id = (ID); \
		PF_PRIV_APPEND_DEF(); \
	} while (0)

/* Degrees, truncated to 16.16. */
#define PF_ADD_ANGLE(NAME, DFLT, ID) \
	do { \
		def.param_type = PF_Param_ANGLE; \
		PF_STRNNCPY(def.PF_DEF_NAME, (NAME), sizeof(def.PF_DEF_NAME)); \
		def.u.ad.value = def.u.ad.dephault = (PF_Fixed)((DFLT) * 65536.0); \
		def.uu.id = (ID); \
		PF_PRIV_APPEND_DEF(); \
	} while (0)

/* Every bound and the default are truncated towards zero into 16.16. */
#define PF_ADD_FIXED(NAME, VALID_MIN, VALID_MAX, SLIDER_MIN, SLIDER_MAX, DFLT, PREC, DISP, FLAGS, ID) \
	do { \
		def.param_type = PF_Param_FIX_SLIDER; \
		PF_STRNNCPY(def.PF_DEF_NAME, (NAME), sizeof(def.PF_DEF_NAME)); \
		def.u.fd.value_str[0] = def.u.fd.value_desc[0] = 0; \
		def.u.fd.value = def.u.fd.dephault = (PF_Fixed)((DFLT) * 65536.0); \
		def.u.fd.valid_min = (PF_Fixed)((VALID_MIN) * 65536.0); \
		def.u.fd.valid_max = (PF_Fixed)((VALID_MAX) * 65536.0); \
		def.u.fd.slider_min = (PF_Fixed)((SLIDER_MIN) * 65536.0); \
		def.u.fd.slider_max = (PF_Fixed)((SLIDER_MAX) * 65536.0); \
		def.u.fd.precision = (PREC); \
		def.u.fd.display_flags |= (DISP); \
		def.flags |= (FLAGS); \
		def.uu.id = (ID); \
		PF_PRIV_APPEND_DEF(); \
	} while (0)

#define PF_ADD_SLIDER(NAME, VALID_MIN, VALID_MAX, SLIDER_MIN, SLIDER_MAX, DFLT, ID) \
	do { \
		def.param_type = PF_Param_SLIDER; \
		PF_STRNNCPY(def.PF_DEF_NAME, (NAME), sizeof(def.PF_DEF_NAME)); \
		def.u.sd.value_str[0] = def.u.sd.value_desc[0] = 0; \
		def.u.sd.valid_min = (VALID_MIN); \
		def.u.sd.valid_max = (VALID_MAX); \
		def.u.sd.slider_min = (SLIDER_MIN); \
		def.u.sd.slider_max = (SLIDER_MAX); \
		def.u.sd.value = def.u.sd.dephault = (DFLT); \
		def.uu.id = (ID); \
		PF_PRIV_APPEND_DEF(); \
	} while (0)

/* Defaults are whole percents of the layer size. */
#define PF_ADD_POINT(NAME, X_DFLT, Y_DFLT, RESTRICT_BOUNDS, ID) \
	do { \
		def.param_type = PF_Param_POINT; \
		PF_STRNNCPY(def.PF_DEF_NAME, (NAME), sizeof(def.PF_DEF_NAME)); \
		def.u.td.restrict_bounds = (RESTRICT_BOUNDS); \
		def.u.td.x_value = def.u.td.x_dephault = ((PF_Fixed)(X_DFLT) << 16); \
		def.u.td.y_value = def.u.td.y_dephault = ((PF_Fixed)(Y_DFLT) << 16); \
		def.uu.id = (ID); \
		PF_PRIV_APPEND_DEF(); \
	} while (0)

/* STRING holds the choices separated by '|'; DFLT is 1-based. */
#define PF_ADD_POPUP(NAME, CHOICES, DFLT, STRING, ID) \
	do { \
		def.param_type = PF_Param_POPUP; \
		PF_STRNNCPY(def.PF_DEF_NAME, (NAME), sizeof(def.PF_DEF_NAME)); \
		def.u.pd.num_choices = (CHOICES); \
		def.u.pd.dephault = (DFLT); \
		def.u.pd.value = def.u.pd.dephault; \
		def.u.pd.u.PF_DEF_NAMESPTR = (STRING); \
		def.uu.id = (ID); \
		PF_PRIV_APPEND_DEF(); \
	} while (0)

#define PF_ADD_POPUPX(NAME, CHOICES, DFLT, STRING, FLAGS, ID) \
	do { \
		AEFX_CLR_STRUCT(def); \
		def.flags = (FLAGS); \
		PF_ADD_POPUP(NAME, CHOICES, DFLT, STRING, ID); \
	} while (0)

#define PF_ADD_CHECKBOX(NAME_A, NAME_B, DFLT, FLAGS, ID) \
	do { \
		def.param_type = PF_Param_CHECKBOX; \
		PF_STRNNCPY(def.PF_DEF_NAME, (NAME_A), sizeof(def.PF_DEF_NAME)); \
		def.u.bd.u.PF_DEF_NAMEPTR = (NAME_B); \
		def.u.bd.value = (DFLT); \
		def.u.bd.dephault = (PF_Boolean)(def.u.bd.value); \
		def.flags |= (FLAGS); \
		def.uu.id = (ID); \
		PF_PRIV_APPEND_DEF(); \
	} while (0)

#define PF_ADD_CHECKBOXX(NAME, DFLT, FLAGS, ID) \
	do { \
		AEFX_CLR_STRUCT(def); \
		PF_ADD_CHECKBOX(NAME, "", DFLT, FLAGS, ID); \
	} while (0)

/* 8-bit channels; alpha is always opaque. */
#define PF_ADD_COLOR(NAME, RED, GREEN, BLUE, ID) \
	do { \
		def.param_type = PF_Param_COLOR; \
		PF_STRNNCPY(def.PF_DEF_NAME, (NAME), sizeof(def.PF_DEF_NAME)); \
		def.u.cd.value.red = (RED); \
		def.u.cd.value.green = (GREEN); \
		def.u.cd.value.blue = (BLUE); \
		def.u.cd.value.alpha = 255; \
		def.u.cd.dephault = def.u.cd.value; \
		def.uu.id = (ID); \
		PF_PRIV_APPEND_DEF(); \
	} while (0)

#endif /* PARAM_UTILS_H */
