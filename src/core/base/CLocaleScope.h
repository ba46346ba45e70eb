#pragma once

#include <locale.h>

namespace veilkeep {

// Holds the calling thread to the C locale, whatever the user's language: reals have a decimal point, and
// regular expressions go by bytes.
class CLocaleScope {
public:
    CLocaleScope() : m_before(::uselocale(cLocale())) {}
    ~CLocaleScope() { ::uselocale(m_before); }
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
    static locale_t cLocale() {
        static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t m_before;
};

} // namespace veilkeep
