# Warnings shared by every target of the project.
function(glyphmoor_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4)
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                             -Wno-sign-conversion)
    if(GLYPHMOOR_WERROR)
      target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      # GCC 12 reports impossible overlaps in std::string, and impossible bounds
      # of memcmp in std::vector's comparison, at -O2 (known false positives).
      target_compile_options(${target} PRIVATE -Wno-restrict -Wno-stringop-overread)
    endif()
  endif()
endfunction()
