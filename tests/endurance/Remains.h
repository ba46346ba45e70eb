#pragma once

#include <cstddef>
#include <string>

namespace veilkeep::test {

// What this process holds between two sequences, and should hold no more of after the second. There is never
// to be a child.
struct Remains {
    std::ptrdiff_t descriptors = 0;
    std::ptrdiff_t threads = 0;
    bool hasChild = false; // running, or not waited for

    static Remains now();
    std::string
    beyond(const Remains& before) const; // in words, with what the descriptors are; empty for none
};

// Live bytes of the heap, where a sanitizer counts them; else 0.
std::size_t heapBytes();

// Whether a sanitizer finds memory that nothing points to, which it then tells on standard error.
bool hasLeaks();

} // namespace veilkeep::test
