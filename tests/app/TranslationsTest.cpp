#include "app/Translations.h"

#include "tests/app/AppWorld.h"

#include <gtest/gtest.h>

#include <QTimer>

namespace veilkeep::test {
namespace {

QString cancel() {
    return QCoreApplication::translate("FilesViewController", "Cancel");
}

TEST(TranslationsTest, AreInTheFirstLanguageThatThereIs) {
    const AppWorld world;
    struct {
        QStringList languages;
        const char* text;
    } const rows[] = {
        {{"de-DE", "de"}, "Abbrechen"},
        {{"es-MX", "en"}, "Cancelar"},
        {{"fr-FR", "fr", "es"}, "Cancelar"},
        {{"en-GB", "de"}, "Cancel"},
        {{"C", "de"}, "Cancel"},
        {{"fr"}, "Cancel"},
        {{"de-Latn-AT", "en-US"}, "Abbrechen"},
        {{}, "Cancel"},
    };
    for (const auto& [languages, text] : rows) {
        Translations translations;
        translations.install(languages);
        EXPECT_EQ(cancel(), text) << languages.join(' ').toStdString();
    }
    EXPECT_EQ(cancel(), "Cancel");
}

TEST(TranslationsTest, NumbersHaveTheirForms) {
    const AppWorld world;
    const auto items = [](int count) {
        return QCoreApplication::translate("veilkeep::SummaryLine", "%Ln items", nullptr, count);
    };
    Translations translations;
    translations.install({"de"});
    EXPECT_EQ(items(1), "1 Element");
    EXPECT_EQ(items(2), "2 Elemente");
}

// The application's windows go on in the user's language while a request waits for something.
TEST(TranslationsTest, EventsBringTheUsersLanguageBack) {
    AppWorld world;
    Translations& translations = world.app().translations();
    translations.install({"de"});
    const LanguageGuard english(&translations, false);
    EXPECT_EQ(cancel(), "Cancel");
    QString inEvent;
    QTimer::singleShot(0, &world.app(), [&] { inEvent = cancel(); });
    EXPECT_TRUE(eventually([&] { return !inEvent.isEmpty(); }));
    EXPECT_EQ(inEvent, "Abbrechen");
    EXPECT_EQ(cancel(), "Cancel");
}

} // namespace
} // namespace veilkeep::test
