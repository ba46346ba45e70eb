#pragma once

namespace veilkeep {

// The language that texts are made in: the user's, or that of the source. Main thread.
class Language {
public:
    virtual ~Language() = default;

    virtual bool setTranslating(bool isTranslating) = 0; // what it was

protected:
    Language() = default;
    Language(const Language&) = default;
    Language& operator=(const Language&) = default;
};

// Sets the language for as long as it lives. A null one has only that of the source.
class LanguageGuard {
public:
    LanguageGuard(Language* language, bool isTranslating)
        : m_language(language), m_before(language && language->setTranslating(isTranslating)) {}
    ~LanguageGuard() {
        if (m_language)
            m_language->setTranslating(m_before);
    }
    LanguageGuard(const LanguageGuard&) = delete;
    LanguageGuard& operator=(const LanguageGuard&) = delete;

private:
    Language* const m_language;
    const bool m_before;
};

} // namespace veilkeep
