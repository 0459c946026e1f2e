#include "PluginFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <gelf.h>
#include <libelf.h>
#include <sys/stat.h>
#include <unistd.h>

namespace KovaSigning {

namespace {

bool libelfReady() {
    static const bool ready = elf_version(EV_CURRENT) != EV_NONE;
    return ready;
}

std::string elfError() {
    const char* message = elf_errmsg(-1);
    return message ? message : "unknown libelf error";
}

std::string systemError(const char* what) {
    return std::string(what) + ": " + std::strerror(errno);
}

void setError(std::string* error, std::string text) {
    if (error)
        *error = std::move(text);
}

} // namespace

PluginFile::PluginFile(const std::string& path, Access access) {
    fd_ = ::open(path.c_str(), (access == Access::ReadWrite ? O_RDWR : O_RDONLY) | O_CLOEXEC);
    if (fd_ < 0) {
        error_ = systemError("cannot open");
        return;
    }
    struct stat info {};
    if (::fstat(fd_, &info) != 0) {
        error_ = systemError("cannot query");
        return;
    }
    if (!S_ISREG(info.st_mode)) {
        error_ = "not a regular file";
        return;
    }
    size_ = static_cast<std::uint64_t>(info.st_size);
    state_ = State::NotSharedObject;
    if (inspect())
        state_ = State::Open;
}

PluginFile::~PluginFile() {
    if (elf_)
        elf_end(elf_);
    if (fd_ >= 0)
        ::close(fd_);
}

bool PluginFile::inspect() {
    if (!libelfReady()) {
        error_ = "libelf cannot be initialised";
        return false;
    }
    elf_ = elf_begin(fd_, ELF_C_READ, nullptr);
    if (!elf_ || elf_kind(elf_) != ELF_K_ELF) {
        error_ = "not an ELF file";
        return false;
    }
    GElf_Ehdr header;
    if (!gelf_getehdr(elf_, &header)) {
        error_ = "unreadable ELF header: " + elfError();
        return false;
    }
    if (header.e_type != ET_DYN) {
        error_ = "not an ELF shared object";
        return false;
    }
    for (Elf_Scn* section = elf_nextscn(elf_, nullptr); section;
         section = elf_nextscn(elf_, section)) {
        GElf_Shdr sectionHeader;
        if (!gelf_getshdr(section, &sectionHeader) || sectionHeader.sh_type != SHT_DYNSYM)
            continue;
        symbols_ = elf_getdata(section, nullptr);
        if (!symbols_ || sectionHeader.sh_entsize == 0) {
            error_ = "unreadable dynamic symbol table: " + elfError();
            return false;
        }
        symbolCount_ = sectionHeader.sh_size / sectionHeader.sh_entsize;
        symbolNames_ = sectionHeader.sh_link;
        return true;
    }
    error_ = "no dynamic symbol table";
    return false;
}

std::optional<DynamicSymbol> PluginFile::findDynamicSymbol(std::string_view name) const {
    for (std::size_t i = 0; i < symbolCount_; ++i) {
        GElf_Sym symbol;
        if (!gelf_getsym(symbols_, static_cast<int>(i), &symbol))
            break;
        const char* symbolName = elf_strptr(elf_, symbolNames_, symbol.st_name);
        if (!symbolName || name != symbolName)
            continue;
        return DynamicSymbol{.address = symbol.st_value,
                             .size = symbol.st_size,
                             .defined = symbol.st_shndx != SHN_UNDEF,
                             .isObject = GELF_ST_TYPE(symbol.st_info) == STT_OBJECT};
    }
    return std::nullopt;
}

std::optional<std::uint64_t> PluginFile::fileOffset(std::uint64_t address,
                                                    std::uint64_t size) const {
    std::size_t count = 0;
    if (elf_getphdrnum(elf_, &count) != 0)
        return std::nullopt;
    for (std::size_t i = 0; i < count; ++i) {
        GElf_Phdr segment;
        if (!gelf_getphdr(elf_, static_cast<int>(i), &segment) || segment.p_type != PT_LOAD)
            continue;
        if (address < segment.p_vaddr || size > segment.p_filesz ||
            address - segment.p_vaddr > segment.p_filesz - size)
            continue;
        const std::uint64_t offset = segment.p_offset + (address - segment.p_vaddr);
        if (offset < segment.p_offset || offset > size_ || size > size_ - offset)
            return std::nullopt;
        return offset;
    }
    return std::nullopt;
}

bool PluginFile::read(std::uint64_t offset, std::span<std::uint8_t> out, std::string* error) const {
    std::size_t done = 0;
    while (done < out.size()) {
        const ssize_t got =
            ::pread(fd_, out.data() + done, out.size() - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) {
            setError(error, got < 0 ? systemError("cannot read") : "unexpected end of file");
            return false;
        }
        done += static_cast<std::size_t>(got);
    }
    return true;
}

std::optional<std::vector<std::uint8_t>> PluginFile::readAll(std::string* error) const {
    std::vector<std::uint8_t> bytes(size_);
    if (!read(0, bytes, error))
        return std::nullopt;
    return bytes;
}

bool PluginFile::write(std::uint64_t offset, std::span<const std::uint8_t> bytes,
                       std::string* error) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t put = ::pwrite(fd_, bytes.data() + done, bytes.size() - done,
                                     static_cast<off_t>(offset + done));
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0) {
            setError(error, systemError("cannot write"));
            return false;
        }
        done += static_cast<std::size_t>(put);
    }
    return true;
}

} // namespace KovaSigning
