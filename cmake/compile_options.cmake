# Options shared by the library and the extension.
#
# -ffp-contract=off: a fused multiply-add rounds once where the formula rounds twice, and would make results depend
# on the machine's vector width. -fno-math-errno and -fno-trapping-math change no value; they let the compiler
# vectorise square roots and guarded lanes.
add_library(vkm_compile_options INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(vkm_compile_options INTERFACE
    -ffp-contract=off -fno-math-errno -fno-trapping-math
    -Wall -Wextra -Wpedantic -Wshadow)
  if(VKM_WERROR)
    target_compile_options(vkm_compile_options INTERFACE -Werror)
  endif()
  if(CMAKE_BUILD_TYPE STREQUAL "Release")
    target_compile_options(vkm_compile_options INTERFACE -O3)
  endif()
endif()
if(VKM_SANITIZE)
  target_compile_options(vkm_compile_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(vkm_compile_options INTERFACE -fsanitize=address,undefined)
endif()
