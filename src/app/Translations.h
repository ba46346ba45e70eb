#pragma once

#include "requests/Language.h"

#include <QLocale>
#include <QStringList>

#include <atomic>
#include <memory>

class QTranslator;

namespace veilkeep {

// The program's texts, and Qt's own, in the first of the user's languages that there is a translation for.
// Any thread may make texts.
class Translations : public Language {
public:
    Translations();
    ~Translations() override;
    Translations(const Translations&) = delete;
    Translations& operator=(const Translations&) = delete;

    void install(const QStringList& languages = QLocale().uiLanguages()); // needs the application object

    bool isTranslating() const { return m_isTranslating; }
    bool setTranslating(bool isTranslating) override { return m_isTranslating.exchange(isTranslating); }

private:
    std::atomic<bool> m_isTranslating = true;
    std::unique_ptr<QTranslator> m_own, m_ofQt; // null: the texts of the source
};

} // namespace veilkeep
