// Facts about this build for `vkmcore info`.

#include "core/kernel.hpp"
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
