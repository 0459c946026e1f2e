#pragma once

#include <cstddef>
#include <cstdint>
#include <sys/resource.h>

namespace KovaIo {

// While alive, the process may map at most `bytes` more address space than it maps now, so a
// reader that trusts a size its file declares gets std::bad_alloc instead of memory the file
// cannot justify. It lowers the process's soft address-space limit (RLIMIT_AS) and puts the
// old one back when it ends: meant for a host that reads a file on one thread while no other
// thread allocates, as `kova` does. Where the limit can't be read or set it does nothing.
class MemoryBudget {
public:
    explicit MemoryBudget(std::size_t bytes);
    ~MemoryBudget();
    MemoryBudget(const MemoryBudget&) = delete;
    MemoryBudget& operator=(const MemoryBudget&) = delete;

    // What reading a file of `fileBytes` may take: 256 MiB plus 64 bytes per byte of the file,
    // and 512 MiB more in sanitizer builds, whose allocators keep freed memory mapped for a
    // while. The largest legitimate expansion among Debian's assimp-testmodels (a subdivided
    // Blender file) fits easily.
    static std::size_t forFile(std::uintmax_t fileBytes);

private:
    rlimit previous_{};
    bool lowered_ = false;
};

} // namespace KovaIo
