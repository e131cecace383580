// Facts about this build for `vkmcore info`, and a switch for its tests.

#include "core/kernel.hpp"
#include "core/wide.hpp"
#include "module/c_symbol.hpp"

#define VKM_TEXT_(x) #x
#define VKM_TEXT(x) VKM_TEXT_(x)

VKM_C_SYMBOL const char* vkm_version() { return VKM_VERSION; }

VKM_C_SYMBOL const char* vkm_compiler() {
#if defined(__clang__)
  return "Clang " __clang_version__;
#elif defined(__GNUC__)
  return "GCC " __VERSION__;
#elif defined(_MSC_VER)
  return "MSVC " VKM_TEXT(_MSC_VER);
#else
  return "unknown";
#endif
}

VKM_C_SYMBOL int vkm_vector_bits() { return vkm::kernel_vector_bits(); }

/// Whether the hand-written kernels are to be taken where they run; says whether they are.
VKM_C_SYMBOL int vkm_want_wide(int wanted) {
  vkm::want_wide(wanted != 0);
  return vkm::has_wide();
}
