#pragma once

/// Kernel dispatch: a function marked VKM_KERNEL is compiled for several vector widths behind one symbol, and the
/// loader picks the widest that the machine has.
///
/// The clones differ in speed only. Contraction of multiply-adds is off, and kernels vectorise across independent
/// outputs, so every width gives the same bits. Functions that a kernel calls must be inlined into it (VKM_INLINE),
/// or they stay at the narrowest width.

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && defined(__gnu_linux__) && \
    !defined(__SANITIZE_ADDRESS__)
#define VKM_KERNEL __attribute__((target_clones("arch=x86-64-v4", "arch=x86-64-v3", "arch=x86-64-v2", "default")))
#define VKM_HAS_CLONES 1
#else
#define VKM_KERNEL
#define VKM_HAS_CLONES 0
#endif

#if defined(__GNUC__)
#define VKM_INLINE inline __attribute__((always_inline))
#else
#define VKM_INLINE inline
#endif

namespace vkm {

/// Width in bits of the vectors that the kernels use on this machine.
int kernel_vector_bits();

}  // namespace vkm
