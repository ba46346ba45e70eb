#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

namespace veilkeep {

// Text or bytes that never change, cheap to copy. Many may lie in one block, as those of a data file do; the
// block stays for as long as one of them does. Any thread.
class SharedText {
public:
    SharedText() = default;
    SharedText(std::string_view text) : m_size(text.size()) {
        if (text.empty())
            return;
        const auto own = std::make_shared_for_overwrite<char[]>(text.size());
        std::ranges::copy(text, own.get());
        m_data = {own, own.get()};
    }
    SharedText(const std::string& text) : SharedText(std::string_view(text)) {}
    SharedText(const char* text) : SharedText(std::string_view(text)) {}
    SharedText(const std::shared_ptr<const void>& block, std::string_view part)
        : m_data(block, part.data()), m_size(part.size()) {}

    std::string_view view() const { return {m_data.get(), m_size}; }
    std::string string() const { return std::string(view()); }
    operator std::string_view() const { return view(); }
    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    bool operator==(const SharedText& other) const { return view() == other.view(); }

private:
    std::shared_ptr<const char> m_data;
    std::size_t m_size = 0;
};

} // namespace veilkeep
