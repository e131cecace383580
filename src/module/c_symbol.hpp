#pragma once

/// What the package asks of the extension beside its public names goes through C symbols, read with ctypes: the
/// module's attributes are the binders' alone.

#if defined(_WIN32)
#define VKM_C_SYMBOL extern "C" __declspec(dllexport)
#else
#define VKM_C_SYMBOL extern "C" __attribute__((visibility("default"), used))
#endif
