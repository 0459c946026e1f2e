// Sanitizer builds of `kova` fail an allocation they cannot have as release builds do: with
// std::bad_alloc, which the file layer reports in one line (a file that declares absurd sizes
// runs into the memory budget of its import). The sanitizers' own throwing operator new ends
// the program with a report instead, as their runtimes throw no exceptions; the forms below ask
// for the nothrow form, which returns null when allowed to, and throw. Some of Assimp's readers
// leak what they had allocated when such an exception passes through them; those leaks belong
// to the system's Assimp and are not reported. Other builds keep the standard library's forms.

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

#include <cstddef>
#include <new>

#define KOVA_EXPORTED __attribute__((visibility("default")))

#if defined(__SANITIZE_ADDRESS__)
extern "C" KOVA_EXPORTED const char* __asan_default_options() {
    return "allocator_may_return_null=1:print_suppressions=0";
}
extern "C" KOVA_EXPORTED const char* __lsan_default_suppressions() {
    return "leak:libassimp.so\n";
}
#else
extern "C" KOVA_EXPORTED const char* __tsan_default_options() {
    return "allocator_may_return_null=1";
}
#endif

KOVA_EXPORTED void* operator new(std::size_t bytes) {
    if (void* block = ::operator new(bytes, std::nothrow)) {
        return block;
    }
    throw std::bad_alloc();
}

KOVA_EXPORTED void* operator new[](std::size_t bytes) {
    if (void* block = ::operator new[](bytes, std::nothrow)) {
        return block;
    }
    throw std::bad_alloc();
}

#endif
