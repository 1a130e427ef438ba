#ifndef AE_EFFECTVERS_H
#define AE_EFFECTVERS_H

/* The API version a plug-in's resource description declares. */

#define PF_PLUG_IN_VERSION 13
#define PF_PLUG_IN_SUBVERS 29

#endif /* AE_EFFECTVERS_H */
