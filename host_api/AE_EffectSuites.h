#ifndef AE_EFFECTSUITES_H
#define AE_EFFECTSUITES_H

/* Parameter utilities: cosmetic parameter updates, keyframe queries. */

#include "AE_Effect.h"
#include "AE_EffectUI.h"
#include "SPBasic.h"

#ifdef __cplusplus
extern "C" {
#endif

#define PF_ParamIndex_NONE                           (-1L)
#define PF_ParamIndex_CHECK_ALL                      (-2L)
#define PF_ParamIndex_CHECK_ALL_EXCEPT_LAYER_PARAMS  (-3L)
#define PF_ParamIndex_CHECK_ALL_HONOR_EXCLUDE        (-4L)

/* Opaque state token. */
typedef struct {
	A_long reservedAL[4];
} PF_State;

enum {
	PF_TimeDir_GREATER_THAN          = 0x0000,
	PF_TimeDir_LESS_THAN             = 0x0001,
	PF_TimeDir_GREATER_THAN_OR_EQUAL = 0x1000,
	PF_TimeDir_LESS_THAN_OR_EQUAL    = 0x1001
};
typedef A_long PF_TimeDir;

typedef A_long PF_KeyIndex;
#define PF_KeyIndex_NONE (-1L)

#define kPFParamUtilsSuite         "PF Param Utils Suite"
#define kPFParamUtilsSuiteVersion1 2
#define kPFParamUtilsSuiteVersion3 3

typedef struct PF_ParamUtilsSuite3 {
	SPAPI PF_Err (*PF_UpdateParamUI)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
	                                 const PF_ParamDef *defP);
	SPAPI PF_Err (*PF_GetCurrentState)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
	                                   const A_Time *startPT0, const A_Time *durationPT0,
	                                   PF_State *stateP);
	SPAPI PF_Err (*PF_AreStatesIdentical)(PF_ProgPtr effect_ref, const PF_State *state1P,
	                                      const PF_State *state2P, A_Boolean *samePB);
	SPAPI PF_Err (*PF_IsIdenticalCheckout)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
	                                       A_long what_time1, A_long time_step1,
	                                       A_u_long time_scale1, A_long what_time2,
	                                       A_long time_step2, A_u_long time_scale2,
	                                       PF_Boolean *identicalPB);
	SPAPI PF_Err (*PF_FindKeyframeTime)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
	                                    A_long what_time, A_u_long time_scale, PF_TimeDir time_dir,
	                                    PF_Boolean *foundPB, PF_KeyIndex *key_indexP0,
	                                    A_long *key_timeP0, A_u_long *key_timescaleP0);
	SPAPI PF_Err (*PF_GetKeyframeCount)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
	                                    PF_KeyIndex *key_countP);
	SPAPI PF_Err (*PF_CheckoutKeyframe)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
	                                    PF_KeyIndex key_index, A_long *key_timeP0,
	                                    A_u_long *key_timescaleP0, PF_ParamDef *paramP0);
	SPAPI PF_Err (*PF_CheckinKeyframe)(PF_ProgPtr effect_ref, PF_ParamDef *paramP);
	SPAPI PF_Err (*PF_KeyIndexToTime)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
	                                  PF_KeyIndex key_indexP, A_long *key_timeP,
	                                  A_u_long *key_timescaleP);
} PF_ParamUtilsSuite3;

#ifdef __cplusplus
}
#endif

#endif /* AE_EFFECTSUITES_H */
