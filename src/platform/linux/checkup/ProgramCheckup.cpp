#include "platform/linux/checkup/ProgramCheckup.h"

#include "core/base/PathText.h"
#include "core/environment/Bundle.h"
#include "core/environment/InstallationPlaces.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/storage/BundleInfo.h"

#include <QLibraryInfo>
#include <QLocale>

#include <algorithm>

namespace veilkeep {
namespace {

// "libqwayland-egl.so" and "libqwayland-generic.so" are two ways of the same.
bool isPluginThere(const std::string& plugins, std::initializer_list<const char*> files) {
    return std::ranges::any_of(files,
                               [&](const char* file) { return itemExistsAt(joinPath(plugins, file)); });
}

std::string otherBundleThan(const std::string& bundle) {
    const std::string ofSystem = joinPath(InstallationPlaces::ofSystem, "Veilkeep.app");
    const std::string ofUser = InstallationPlaces::ofUser().bundle;
    for (const std::string& other : {ofSystem, ofUser})
        if (!other.empty() && other != bundle && isDirectoryAt(other))
            return other;
    return {};
}

// The first of the user's languages that Veilkeep has texts in; empty where English comes before it.
std::string languageWithTexts() {
    for (const QString& name : QLocale::system().uiLanguages()) {
        const QLocale::Language language = QLocale(name).language();
        if (language == QLocale::English || language == QLocale::C)
            return {};
        const std::string code = QLocale::languageToCode(language).toStdString();
        if (code == "de" || code == "es")
            return code;
    }
    return {};
}

void lookAtQt(ProgramFacts& facts) {
    facts.qtPlugins = QLibraryInfo::path(QLibraryInfo::PluginsPath).toStdString();
    facts.hasSvgImages = isPluginThere(facts.qtPlugins, {"imageformats/libqsvg.so"});
    facts.hasXcb = isPluginThere(facts.qtPlugins, {"platforms/libqxcb.so"});
    facts.hasWayland =
        isPluginThere(facts.qtPlugins, {"platforms/libqwayland-generic.so", "platforms/libqwayland-egl.so",
                                        "platforms/libqwayland.so"});
    facts.language = languageWithTexts();
    const std::string translations = QLibraryInfo::path(QLibraryInfo::TranslationsPath).toStdString();
    facts.hasQtTranslation =
        facts.language.empty() || itemExistsAt(joinPath(translations, "qtbase_" + facts.language + ".qm"));
}

} // namespace

ProgramFacts lookAtProgram(const std::string& ownVersion) {
    ProgramFacts facts;
    facts.ownVersion = ownVersion;
    facts.bundle = applicationBundlePath();
    if (!facts.bundle.empty()) {
        for (const char* const program : {"Veilkeep", "cloakWorker", "cloakTraces"})
            if (!isProgramAt(bundledProgramPath(facts.bundle, program)))
                facts.missing.emplace_back(program);
        facts.bundleVersion = BundleInfo::main().version();
    }
    if (const std::string other = otherBundleThan(facts.bundle); !other.empty()) {
        facts.otherBundle = other;
        facts.otherVersion = BundleInfo::ofBundle(other).version();
    }
    lookAtQt(facts);
    return facts;
}

} // namespace veilkeep
