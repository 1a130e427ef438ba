# Warnings every target of ours is built with.
function(orbivane_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra)
  if(ORBIVANE_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
