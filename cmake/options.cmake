# Compile and link options shared by every target.
add_library(corvane_options INTERFACE)
target_compile_options(corvane_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
target_compile_definitions(
  corvane_options INTERFACE QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_NO_URL_CAST_FROM_STRING
                            QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(CORVANE_WERROR)
  target_compile_options(corvane_options INTERFACE -Werror)
endif()
if(CORVANE_SANITIZE)
  set(flags -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_compile_options(corvane_options INTERFACE ${flags})
  target_link_options(corvane_options INTERFACE ${flags})
endif()

if(CORVANE_FUZZ)
  target_compile_options(corvane_options INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(corvane_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()
