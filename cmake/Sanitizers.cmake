# ORBIVANE_SANITIZE=address,undefined or thread instruments every target, the module included.
if(ORBIVANE_SANITIZE)
  set(_flags -fsanitize=${ORBIVANE_SANITIZE} -fno-omit-frame-pointer -g)
  if(ORBIVANE_SANITIZE MATCHES "undefined")
    list(APPEND _flags -fno-sanitize-recover=undefined)
  endif()
  add_compile_options(${_flags})
  add_link_options(-fsanitize=${ORBIVANE_SANITIZE})
endif()
