#pragma once

#include <cstdint>
#include <libelf.h>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace KovaSigning {

// A symbol of a file's dynamic symbol table.
struct DynamicSymbol {
    std::uint64_t address = 0;
    std::uint64_t size = 0;
    bool defined = false; // false for a reference the library imports
    bool isObject = false;
};

// An ELF shared object opened for inspection through libelf. The file is read (and, for signing,
// patched) through one descriptor; it is never loaded, so none of its code runs.
class PluginFile {
public:
    enum class Access { ReadOnly, ReadWrite };
    enum class State { Open, Unreadable, NotSharedObject };

    PluginFile(const std::string& path, Access access);
    ~PluginFile();
    PluginFile(const PluginFile&) = delete;
    PluginFile& operator=(const PluginFile&) = delete;

    State state() const { return state_; }
    // Why the file is not Open.
    const std::string& error() const { return error_; }
    std::uint64_t size() const { return size_; }

    // The first entry of .dynsym with this name, or nothing if there is none.
    std::optional<DynamicSymbol> findDynamicSymbol(std::string_view name) const;
    // File offset of the bytes loaded at [address, address + size), or nothing if that range is
    // not wholly inside the file part of one loadable segment.
    std::optional<std::uint64_t> fileOffset(std::uint64_t address, std::uint64_t size) const;

    bool read(std::uint64_t offset, std::span<std::uint8_t> out, std::string* error) const;
    std::optional<std::vector<std::uint8_t>> readAll(std::string* error) const;
    bool write(std::uint64_t offset, std::span<const std::uint8_t> bytes, std::string* error);

private:
    bool inspect();

    int fd_ = -1;
    Elf* elf_ = nullptr;
    Elf_Data* symbols_ = nullptr;
    std::size_t symbolCount_ = 0;
    std::size_t symbolNames_ = 0; // section index of the symbol names
    std::uint64_t size_ = 0;
    State state_ = State::Unreadable;
    std::string error_;
};

} // namespace KovaSigning
