#include "core/kernel.hpp"

namespace vkm {

int kernel_vector_bits() {
#if VKM_HAS_CLONES
  __builtin_cpu_init();
  if (__builtin_cpu_supports("x86-64-v4")) return 512;
  if (__builtin_cpu_supports("x86-64-v3")) return 256;
#endif
#if defined(__AVX512F__)
  return 512;
#elif defined(__AVX__)
  return 256;
#elif defined(__SSE2__) || defined(__ARM_NEON)
  return 128;
#else
  return 64;
#endif
}

}  // namespace vkm
