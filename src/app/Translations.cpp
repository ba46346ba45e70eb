#include "app/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

void initTranslations() {
    Q_INIT_RESOURCE(translations);
}

namespace veilkeep {
namespace {

// Says nothing while the texts of the source are wanted.
class Translator : public QTranslator {
public:
    explicit Translator(const Translations& translations) : m_translations(translations) {}

    QString translate(const char* context, const char* text, const char* comment, int count) const override {
        return m_translations.isTranslating() ? QTranslator::translate(context, text, comment, count)
                                              : QString();
    }

private:
    const Translations& m_translations;
};

std::unique_ptr<QTranslator> installed(const Translations& translations, const QString& file) {
    auto translator = std::make_unique<Translator>(translations);
    if (!translator->load(file) || !QCoreApplication::installTranslator(translator.get()))
        return nullptr;
    return translator;
}

bool isOfTheSource(QLocale::Language language) {
    return language == QLocale::English || language == QLocale::C;
}

} // namespace

Translations::Translations() = default;
Translations::~Translations() = default;

void Translations::install(const QStringList& languages) {
    initTranslations();
    for (const QString& name : languages) {
        const QLocale::Language language = QLocale(name).language();
        if (isOfTheSource(language))
            return;
        const QString code = QLocale::languageToCode(language);
        m_own = installed(*this, QStringLiteral(":/translations/veilkeep_%1.qm").arg(code));
        if (!m_own)
            continue;
        m_ofQt = installed(
            *this,
            QStringLiteral("%1/qtbase_%2.qm").arg(QLibraryInfo::path(QLibraryInfo::TranslationsPath), code));
        return;
    }
}

} // namespace veilkeep
