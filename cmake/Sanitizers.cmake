# ORBIVANE_SANITIZE=address,undefined or thread instruments every target, the module included.
if(ORBIVANE_SANITIZE)
  set(_flags -fsanitize=${ORBIVANE_SANITIZE} -fno-omit-frame-pointer -g)
  set(_link_flags -fsanitize=${ORBIVANE_SANITIZE})
  if(ORBIVANE_SANITIZE MATCHES "undefined")
    # Not part of "undefined": a float too large for the integer it is converted to, as a
    # frame count or a time in ticks computed from a hostile scene would be.
    list(APPEND _flags -fsanitize=float-cast-overflow -fno-sanitize-recover=undefined,float-cast-overflow)
    list(APPEND _link_flags -fsanitize=float-cast-overflow)
  endif()
  add_compile_options(${_flags})
  add_link_options(${_link_flags})
endif()
