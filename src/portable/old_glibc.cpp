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

#define VKM_HIDDEN extern "C" __attribute__((visibility("hidden")))
#define VKM_OLD_VERSION(alias, name) __asm__(".symver " #alias ", " #name "@GLIBC_2.2.5")

VKM_OLD_VERSION(old_pthread_once, pthread_once);
VKM_OLD_VERSION(old_pthread_create, pthread_create);
VKM_OLD_VERSION(old_pthread_join, pthread_join);
VKM_OLD_VERSION(old_pthread_detach, pthread_detach);

extern "C" {
int old_pthread_once(pthread_once_t*, void (*)());
int old_pthread_create(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
int old_pthread_join(pthread_t, void**);
int old_pthread_detach(pthread_t);
}

// Moved from libpthread to libc in glibc 2.34.
VKM_HIDDEN int pthread_once(pthread_once_t* once, void (*call)()) { return old_pthread_once(once, call); }
VKM_HIDDEN int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*call)(void*), void* data) {
  return old_pthread_create(thread, attributes, call, data);
}
VKM_HIDDEN int pthread_join(pthread_t thread, void** result) { return old_pthread_join(thread, result); }
VKM_HIDDEN int pthread_detach(pthread_t thread) { return old_pthread_detach(thread); }

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
VKM_HIDDEN int stat_of_file(int file, void* out) __asm__("fstat64");
int stat_of_path(const char* path, void* out) {
  return static_cast<int>(syscall(SYS_newfstatat, AT_FDCWD, path, out, 0));
}
int stat_of_link(const char* path, void* out) {
  return static_cast<int>(syscall(SYS_newfstatat, AT_FDCWD, path, out, AT_SYMLINK_NOFOLLOW));
}
int stat_of_file(int file, void* out) { return static_cast<int>(syscall(SYS_fstat, file, out)); }

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
