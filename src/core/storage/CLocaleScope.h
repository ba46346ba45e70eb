#pragma once

#include <locale.h>

namespace veilkeep {

// Holds the calling thread to the C locale, so that reals have a decimal point whatever the user's language.
class CLocaleScope {
public:
    CLocaleScope() : m_locale(::newlocale(LC_ALL_MASK, "C", nullptr)), m_before(::uselocale(m_locale)) {}
    ~CLocaleScope() {
        ::uselocale(m_before);
        ::freelocale(m_locale);
    }
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
    locale_t m_locale;
    locale_t m_before;
};

} // namespace veilkeep
