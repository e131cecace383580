// Linked into the extension modules of a wheel, so that they load on systems with glibc 2.28 and older than that.
//
// The C++ run-time library that is linked into them was compiled against this machine's glibc and asks for names, or
// versions of names, that older ones lack. Here are these names for the module alone: by the versions that every glibc
// has, or by what such a name stands for.

#include <fcntl.h>
#include <pthread.h>
#include <sys/random.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

// A function of this module alone, under the name of one of glibc's.
#define VKM_HIDDEN extern "C" __attribute__((visibility("hidden")))

// Moved from libpthread to libc in glibc 2.34, where they have new versions; the old ones are still there.
#define VKM_OLD_VERSION(result, name, parameters, arguments) \
  __asm__(".symver old_" #name ", " #name "@GLIBC_2.2.5");   \
  extern "C" result old_##name parameters;                   \
  VKM_HIDDEN result module_##name parameters __asm__(#name); \
  result module_##name parameters { return old_##name arguments; }

VKM_OLD_VERSION(int, pthread_once, (pthread_once_t * once, void (*call)()), (once, call))
VKM_OLD_VERSION(int, pthread_create,
                (pthread_t * thread, const pthread_attr_t* attributes, void* (*call)(void*), void* data),
                (thread, attributes, call, data))
VKM_OLD_VERSION(int, pthread_join, (pthread_t thread, void** result), (thread, result))
VKM_OLD_VERSION(int, pthread_detach, (pthread_t thread), (thread))
VKM_OLD_VERSION(int, pthread_key_create, (pthread_key_t * key, void (*destroy)(void*)), (key, destroy))
VKM_OLD_VERSION(int, pthread_key_delete, (pthread_key_t key), (key))
VKM_OLD_VERSION(void*, pthread_getspecific, (pthread_key_t key), (key))
VKM_OLD_VERSION(int, pthread_setspecific, (pthread_key_t key, const void* value), (key, value))
VKM_OLD_VERSION(int, pthread_rwlock_rdlock, (pthread_rwlock_t * lock), (lock))
VKM_OLD_VERSION(int, pthread_rwlock_wrlock, (pthread_rwlock_t * lock), (lock))
VKM_OLD_VERSION(int, pthread_rwlock_unlock, (pthread_rwlock_t * lock), (lock))

// New in glibc 2.30. Waiting by the wall clock ends earlier or later if that is set meanwhile; callers then wait again.
VKM_HIDDEN int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock,
                                      const timespec* until) {
  timespec now, wall;
  clock_gettime(clock, &now);
  clock_gettime(CLOCK_REALTIME, &wall);
  wall.tv_sec += until->tv_sec - now.tv_sec;
  wall.tv_nsec += until->tv_nsec - now.tv_nsec;
  if (wall.tv_nsec < 0) --wall.tv_sec, wall.tv_nsec += 1'000'000'000;
  if (wall.tv_nsec >= 1'000'000'000) ++wall.tv_sec, wall.tv_nsec -= 1'000'000'000;
  return pthread_cond_timedwait(condition, mutex, &wall);
}

// Inline functions of the headers before glibc 2.33. The kernel's `struct stat` is that of glibc.
VKM_HIDDEN int stat_of_path(const char* path, void* out) __asm__("stat");
VKM_HIDDEN int stat_of_link(const char* path, void* out) __asm__("lstat");
VKM_HIDDEN int stat_of_file(int file, void* out) __asm__("fstat");
VKM_HIDDEN int stat_of_file_64(int file, void* out) __asm__("fstat64");
int stat_of_path(const char* path, void* out) {
  return static_cast<int>(syscall(SYS_newfstatat, AT_FDCWD, path, out, 0));
}
int stat_of_link(const char* path, void* out) {
  return static_cast<int>(syscall(SYS_newfstatat, AT_FDCWD, path, out, AT_SYMLINK_NOFOLLOW));
}
int stat_of_file(int file, void* out) { return static_cast<int>(syscall(SYS_fstat, file, out)); }
int stat_of_file_64(int file, void* out) { return stat_of_file(file, out); }

// New in glibc 2.36; a source of seeds that the library does not use.
VKM_HIDDEN std::uint32_t arc4random() {
  std::uint32_t bits = 0;
  if (getentropy(&bits, sizeof bits) != 0) std::abort();
  return bits;
}

// New in glibc 2.32: whether counters of references may do without atomic instructions. Python has threads: they may
// not.
VKM_HIDDEN char __libc_single_threaded;
char __libc_single_threaded = 0;
