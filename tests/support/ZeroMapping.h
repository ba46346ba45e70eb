#pragma once

#include <sys/mman.h>

#include <cerrno>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace veilkeep::test {

// That many zero bytes to be read, which take no memory.
class ZeroMapping {
public:
    explicit ZeroMapping(std::size_t size) : m_size(size) {
        m_begin = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (m_begin == MAP_FAILED)
            throw std::system_error(errno, std::generic_category(), "mmap");
    }
    ~ZeroMapping() { ::munmap(m_begin, m_size); }
    ZeroMapping(const ZeroMapping&) = delete;
    ZeroMapping& operator=(const ZeroMapping&) = delete;

    std::string_view view() const { return {static_cast<const char*>(m_begin), m_size}; }

private:
    void* m_begin;
    std::size_t m_size;
};

} // namespace veilkeep::test
