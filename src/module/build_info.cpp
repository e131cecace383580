// Facts about this build for `vkmcore info`. They are plain C symbols, read through ctypes, and not attributes of the
// module: its public names are the binders' alone.

#include "core/kernel.hpp"

#define VKM_TEXT_(x) #x
#define VKM_TEXT(x) VKM_TEXT_(x)

#if defined(_WIN32)
#define VKM_EXPORT __declspec(dllexport)
#else
#define VKM_EXPORT __attribute__((visibility("default"), used))
#endif

extern "C" {

VKM_EXPORT const char* vkm_version() { return VKM_VERSION; }

VKM_EXPORT const char* vkm_compiler() {
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

VKM_EXPORT int vkm_vector_bits() { return vkm::kernel_vector_bits(); }
}
